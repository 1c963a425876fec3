// The delays that set the bus speed: counted busy-waits, calibrated against the tick counter.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>

#include "platform/tick_counter.h"

namespace tongxun {

class BusTiming {
 public:
  explicit BusTiming(TickCounter& ticks) : ticks_(ticks) {}

  std::int16_t SpeedFactor = 2;     // delay multiplier, 1..10; larger is slower
  std::int32_t TickPollCount = 0;   // readings of the tick counter within one tick interval
  std::int32_t BitDelayCount = 0;   // Int(TickPollCount / 1000) * SpeedFactor
  std::int32_t ByteDelayCount = 0;  // six times BitDelayCount
  std::int64_t Steps = 0;           // counting steps since the start; never reset
  std::atomic<std::int64_t> Increments = 0;  // executed for those steps and for calibrations

  /// Told the new `TickPollCount` at every calibration, for display.
  std::function<void(std::int32_t)> Calibrated;

  /// Busy-waits of `BitDelayCount` - 1 and `ByteDelayCount` - 1 steps; none for a count of 1 or
  /// less. After a calibration the bit delay takes 1.25 us times `SpeedFactor`.
  void BitDelay() { Count(BitDelayCount - 1); }
  void ByteDelay() { Count(ByteDelayCount - 1); }
  /// 1001 byte delays.
  void LongDelay();

  /// Measures `TickPollCount` and what a step consists of, and sets both delay counts for
  /// `SpeedFactor`. Holds the thread for one second plus one tick interval. A `TickPollCount` below
  /// 1000, or below 2000 with a `SpeedFactor` of 1, gives a bus without bit delays.
  void CalibrateSpeed();

  /// Holds the thread for `duration_ms` milliseconds of the tick counter.
  void WaitMilliseconds(std::uint32_t duration_ms);

 private:
  void Count(std::int32_t steps);
  void Increment(std::int64_t times);
  std::chrono::nanoseconds TimeBurst();
  std::int32_t PollOneTick(std::uint32_t& now);

  TickCounter& ticks_;
  double incrementsPerStep_ = 1;  // until the first calibration
};

}  // namespace tongxun
