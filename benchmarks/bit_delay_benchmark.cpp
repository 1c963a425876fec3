#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>

#include "calibrated_timing.h"

namespace {

Calibration Calibrate() {
  const auto ticks = SystemTickCounter();
  tongxun::BusTiming timing(*ticks);
  const auto begin = std::chrono::steady_clock::now();
  timing.CalibrateSpeed();
  const std::chrono::duration<double> held = std::chrono::steady_clock::now() - begin;
  return {held.count(), timing.TickPollCount, timing.BitDelayCount, timing.ByteDelayCount};
}

/// Argument: the speed factor.
void BitDelay(benchmark::State& state) {
  const Calibration& calibration = MedianCalibration();
  const auto ticks = SystemTickCounter();
  tongxun::BusTiming timing(*ticks);
  timing.BitDelayCount =
      calibration.tickPollCount / 1000 * static_cast<std::int32_t>(state.range(0));
  for (auto _ : state) timing.BitDelay();
  state.counters["calibration_s"] = calibration.seconds;
  state.counters["TickPollCount"] = calibration.tickPollCount;
  state.counters["BitDelayCount"] = timing.BitDelayCount;
}
BENCHMARK(BitDelay)->Arg(1)->Arg(2)->Arg(5)->Arg(10);

}  // namespace

const Calibration& MedianCalibration() {
  static const Calibration median = [] {
    std::array<Calibration, 5> all{};
    std::generate(all.begin(), all.end(), Calibrate);
    std::sort(all.begin(), all.end(), [](const Calibration& a, const Calibration& b) {
      return a.tickPollCount < b.tickPollCount;
    });
    return all[2];
  }();
  return median;
}
