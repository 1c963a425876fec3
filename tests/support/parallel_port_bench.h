// The real port code over a fake kernel, and what it told the operator.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/linux_parallel_port.h"
#include "support/fake_port_system.h"

struct Bench {
  FakeKernel kernel;
  std::vector<std::string> told;
  std::unique_ptr<PortIo> io;

  Bench() {
    io = std::make_unique<LinuxParallelPort>(
        std::make_unique<FakePortSystem>(kernel),
        [this](const std::string& message) { told.push_back(message); });
  }
  void AddUsualPort() { kernel.AddPort("parport0", "888\t1912\n"); }
};
