// Records of what passed on the simulated bus.
#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "bus/vcd_writer.h"
#include "simulator/cable.h"
#include "simulator/wire_decoder.h"

namespace simulator {

/// Frames as text, one line from START to STOP, for instance "S 96 68 00 P": "Sr" a repeated START,
/// [xx] a byte from the target, "-" behind a byte that was not acknowledged.
class FrameLog final : public BusListener {
 public:
  const std::vector<std::string>& Lines() const { return lines_; }
  void Clear() { lines_.clear(); }

  void Started(bool repeated) override;
  void Byte(std::uint8_t value, bool fromTarget, bool acknowledged) override;
  void Stopped() override;

 private:
  std::vector<std::string> lines_;
};

/// Counts, without keeping anything.
class FrameCounters final : public BusListener {
 public:
  std::uint64_t frames = 0;
  std::uint64_t bytes = 0;
  std::uint64_t refused = 0;  // bytes from the master that were not acknowledged

  void Started(bool) override { ++frames; }
  void Byte(std::uint8_t, bool fromTarget, bool acknowledged) override;
  void Stopped() override {}
};

/// Writes the two bus lines as a value change dump. One port access stands for one microsecond; the
/// first one that is seen is number 1.
class VcdRecorder final : public LevelListener {
 public:
  explicit VcdRecorder(std::ostream& out) : vcd_(out, "1us") {}
  void Levels(std::uint64_t access, bool sda, bool scl) override;

 private:
  VcdWriter vcd_;
  std::optional<std::uint64_t> before_;  // number of the last access that was not seen
};

}  // namespace simulator
