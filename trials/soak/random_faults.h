// Random numbers, and random faults of a simulated board.
#pragma once

#include <random>

#include "simulator/simulated_board.h"

using Random = std::mt19937;

inline std::size_t Pick(Random& random, std::size_t least, std::size_t most) {
  return std::uniform_int_distribution<std::size_t>(least, most)(random);
}

/// Switches zero, one or two faults on that concern the next `frames` frames and an image of
/// `imageSize` bytes; true when there is none. `busyOneIn`: how rarely a chip is busy for ever.
inline bool AddFaults(Random& random, std::size_t frames, std::size_t imageSize,
                      std::size_t busyOneIn, simulator::SimulatedBoard& board) {
  const std::uint64_t seen = board.wire.FramesSeen();
  const std::size_t count = Pick(random, 0, 2);
  for (std::size_t i = 0; i < count; ++i) {
    switch (Pick(random, 0, 3)) {
      case 0:
        board.faults.refusedByte = {seen + Pick(random, 1, frames), Pick(random, 0, 257)};
        break;
      case 1:
        board.faults.unpluggedAfterFrame = seen + Pick(random, 0, frames);
        break;
      case 2:
        board.faults.flippedBit = {static_cast<int>(Pick(random, 0, 1)),
                                   static_cast<std::uint32_t>(Pick(random, 0, imageSize)),
                                   static_cast<int>(Pick(random, 0, 7))};
        break;
      default:
        // What hangs goes on hanging until the power is cycled.
        if (Pick(random, 1, busyOneIn) == 1) board.faults.busyForEver = true;
        board.faults.sdaStuckLow = !board.faults.busyForEver && Pick(random, 0, 1) == 0;
    }
  }
  return count == 0;
}
