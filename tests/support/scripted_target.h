// A target on the simulated wire that answers from a list.
#pragma once

#include <cstdint>
#include <deque>
#include <limits>

#include "simulator/i2c_target.h"

class ScriptedTarget final : public simulator::I2cTarget {
 public:
  std::deque<std::uint8_t> replies{0xFF};  // the last one is repeated
  int addressesAnswered = std::numeric_limits<int>::max();
  int reads = 0;

  void OnStart() override {}
  void OnStop() override {}
  bool OnAddress(std::uint8_t) override { return addressesAnswered-- > 0; }
  bool OnWrite(std::uint8_t) override { return true; }
  std::uint8_t OnRead() override {
    ++reads;
    const std::uint8_t reply = replies.front();
    if (replies.size() > 1) replies.pop_front();
    return reply;
  }
  void OnUnplugged() override {}
};
