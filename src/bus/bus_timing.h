// The delays that set the bus speed: counted busy-waits, calibrated against the tick counter.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>

#include "platform/tick_counter.h"

namespace tongxun {

class BusTiming {
 public:
  explicit BusTiming(TickCounter& ticks) : ticks_(ticks) {}

  std::int16_t SpeedFactor = 2;         // delay multiplier, 1..10; larger is slower
  std::int32_t TickPollCount = 0;       // readings of the tick counter within one tick interval
  std::int32_t BitDelayCount = 0;       // Int(TickPollCount / 1000) * SpeedFactor
  std::int32_t ByteDelayCount = 0;      // six times BitDelayCount
  std::atomic<std::int64_t> Steps = 0;  // counting steps executed since the start; never reset

  /// Told the new `TickPollCount` at every calibration, for display.
  std::function<void(std::int32_t)> Calibrated;

  /// Busy-waits of `BitDelayCount` - 1 and `ByteDelayCount` - 1 steps; none for a count of 1 or
  /// less.
  void BitDelay() { CountTo(BitDelayCount); }
  void ByteDelay() { CountTo(ByteDelayCount); }
  /// 1001 byte delays.
  void LongDelay();

  /// Measures `TickPollCount` and sets both delay counts for `SpeedFactor`. Holds the thread for
  /// one second plus one tick interval. A count below 1000 gives a bus without added delays.
  void CalibrateSpeed();

  /// Holds the thread for `duration_ms` milliseconds of the tick counter.
  void WaitMilliseconds(std::uint32_t duration_ms);

 private:
  void CountTo(std::int32_t count) {
    // The delay is nothing but the number of its steps, so each must really be executed and take
    // its time. An atomic increment is and does; a plain one, even of a volatile counter, some
    // processors shorten to a fraction of a trip to memory, which makes the bus too fast.
    const std::int64_t end = Steps + count - 1;
    while (Steps < end) ++Steps;
  }

  TickCounter& ticks_;
};

}  // namespace tongxun
