#include "bus/bus_timing.h"

namespace tongxun {

void BusTiming::LongDelay() {
  for (int i = 0; i < 1001; ++i) ByteDelay();
}

void BusTiming::WaitMilliseconds(std::uint32_t duration_ms) {
  const std::uint32_t begin = ticks_.GetTickCount();
  while (ticks_.GetTickCount() - begin < duration_ms) {
  }
}

void BusTiming::CalibrateSpeed() {
  // A whole number of ticks: after this wait the counter has only just advanced.
  WaitMilliseconds(1000);

  TickPollCount = 0;
  const std::uint32_t begin = ticks_.GetTickCount();
  std::uint32_t now = begin;
  do {
    now = ticks_.GetTickCount();
    ++TickPollCount;
  } while (now - begin < 1);
  if (Calibrated) Calibrated(TickPollCount);

  const std::int32_t unit = TickPollCount / 1000;
  ByteDelayCount = unit * 6 * SpeedFactor;
  BitDelayCount = unit * SpeedFactor;
}

}  // namespace tongxun
