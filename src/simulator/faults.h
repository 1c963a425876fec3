// Faults that an operator or a test switches on. Frames are counted from 1 as the wire decoder sees
// them, a repeated START beginning a new one.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>

namespace simulator {

struct Faults {
  static constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();

  struct RefusedByte {
    std::uint64_t frame;
    std::size_t byte;  // 0 is the address byte
    bool operator==(const RefusedByte&) const = default;
  };
  struct FlippedBit {
    int bank;
    std::uint32_t address;
    int bit;  // 0..7
    bool operator==(const FlippedBit&) const = default;
  };

  std::uint64_t unpluggedAfterFrame = kNever;  // 0: unplugged now
  std::optional<RefusedByte> refusedByte;      // not acknowledged and not given to the chip
  std::optional<FlippedBit> flippedBit;        // a flash cell that always takes this bit wrongly
  bool busyForEver = false;                    // no operation that the chip starts ever ends
  bool sdaStuckLow = false;

  bool operator==(const Faults&) const = default;
};

}  // namespace simulator
