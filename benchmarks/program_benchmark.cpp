// What the software adds to the port accesses and delays that programming consists of.
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>

#include "calibrated_timing.h"
#include "support/bench.h"
#include "support/images.h"

namespace {

constexpr double kAccess_s = 1e-6;  // what a parallel port's I/O cycle takes
constexpr std::size_t kImageBytes = 65536;

/// A port whose every access costs the same count of steps, and whose chip acknowledges everything.
class BusyPort final : public PortIo {
 public:
  std::int64_t accesses = 0;
  std::int64_t stepsPerAccess = 0;

  void DlPortWritePortUchar(std::uint32_t, std::uint8_t) override { Access(); }
  std::uint8_t DlPortReadPortUchar(std::uint32_t) override {
    Access();
    return 0xFF;
  }

  /// Sets `stepsPerAccess` so that an access takes about `kAccess_s`.
  void Calibrate() {
    stepsPerAccess = 100'000'000;
    const auto begin = std::chrono::steady_clock::now();
    Access();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    stepsPerAccess = static_cast<std::int64_t>(1e8 * kAccess_s / took.count());
  }

 private:
  void Access() {
    ++accesses;
    step_ = 0;
    while (step_ < stepsPerAccess) step_ = step_ + 1;
  }

  volatile std::int64_t step_ = 0;
};

/// Built once: both benchmarks use the same delays and the same port.
struct Programming {
  Programming() {
    tool.port.BoardTable[0] = Wiring();
    tool.port.InitPortShadows();
    tool.timing.BitDelayCount = MedianCalibration().bitDelayCount;
    tool.timing.ByteDelayCount = MedianCalibration().byteDelayCount;
    const auto image = Image(kImageBytes);
    std::copy(image.begin(), image.end(), tool.buffers.CodeBuffer.begin());
    Run();  // while an access costs nothing: only to count
    accesses = port.accesses;
    steps = tool.timing.Steps;
    port.Calibrate();
  }

  void Run() {
    tool.isp.ProgramImage(kImageBytes - 1, view);
    view.Take();
  }

  FakeTicks ticks;
  BusyPort port;
  Tool tool{port, ticks, {}};
  Transcript view;
  std::int64_t accesses = 0;  // of one run
  std::int64_t steps = 0;     // of delay in one run
};

Programming& TheProgramming() {
  static const auto programming = std::make_unique<Programming>();
  return *programming;
}

void Count(benchmark::State& state, const Programming& programming) {
  state.counters["accesses"] = static_cast<double>(programming.accesses);
  state.counters["delay_steps"] = static_cast<double>(programming.steps);
  state.counters["steps_per_access"] = static_cast<double>(programming.port.stepsPerAccess);
}

void Program64KiB(benchmark::State& state) {
  Programming& programming = TheProgramming();
  for (auto _ : state) programming.Run();
  Count(state, programming);
}
BENCHMARK(Program64KiB)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(5);

void BareAccessesAndDelays(benchmark::State& state) {
  Programming& programming = TheProgramming();
  PortIo* port = &programming.port;
  benchmark::DoNotOptimize(port);
  tongxun::BusTiming delay(programming.ticks);
  for (auto _ : state) {
    for (std::int64_t i = 0; i < programming.accesses; ++i) port->DlPortWritePortUchar(0x378, 0);
    for (std::int64_t left = programming.steps; left > 0; left -= delay.BitDelayCount - 1) {
      delay.BitDelayCount = static_cast<std::int32_t>(std::min<std::int64_t>(left, 1 << 20) + 1);
      delay.BitDelay();
    }
  }
  Count(state, programming);
}
BENCHMARK(BareAccessesAndDelays)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(5);

}  // namespace
