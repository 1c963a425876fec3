// A tick counter that advances by its readings, not by time.
#pragma once

#include "platform/tick_counter.h"

/// Advances 15 ms every `readingsPerTick` readings.
class FakeTicks : public TickCounter {
 public:
  explicit FakeTicks(std::uint32_t readingsPerTick = 10) : readingsPerTick_(readingsPerTick) {}

  std::uint32_t GetTickCount() override { return readings_++ / readingsPerTick_ * 15; }

  /// Advances by this with each reading; stands still at first, so that delays take no time.
  std::chrono::nanoseconds fineStep{};
  std::chrono::nanoseconds FineTime() override { return fine_ += fineStep; }

  /// Milliseconds that have passed.
  std::uint32_t Elapsed() const { return readings_ / readingsPerTick_ * 15; }

 private:
  std::uint32_t readingsPerTick_;
  std::uint32_t readings_ = 0;
  std::chrono::nanoseconds fine_{};
};
