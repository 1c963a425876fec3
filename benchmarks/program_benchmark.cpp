// What the software adds to the port accesses and delays that programming consists of.
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>

#include "support/images.h"
#include "support/vsk_rig.h"

namespace {

constexpr double kAccess_s = 1e-6;  // what a parallel port's I/O cycle takes
constexpr std::size_t kImageBytes = 65536;

/// A port whose every access waits for the same count of steps, and whose chip acknowledges
/// everything.
class BusyPort final : public PortIo {
 public:
  explicit BusyPort(TickCounter& ticks) : wait_(ticks) {}

  std::int64_t accesses = 0;

  void DlPortWritePortUchar(std::uint32_t, std::uint8_t) override { Access(); }
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t) override {
    Access();
    return 0xFF;
  }

  /// Lets an access take about `kAccess_s`; before, it takes no time.
  void Calibrate() {
    constexpr std::int32_t kTried = 100'000'000;
    wait_.BitDelayCount = kTried;
    const auto begin = std::chrono::steady_clock::now();
    wait_.BitDelay();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    wait_.BitDelayCount = static_cast<std::int32_t>(kTried * kAccess_s / took.count());
  }
  std::int32_t StepsPerAccess() const { return wait_.BitDelayCount - 1; }

 private:
  void Access() {
    ++accesses;
    wait_.BitDelay();
  }

  tongxun::BusTiming wait_;
};

/// Built once: both benchmarks use the same delays and the same port.
struct Programming {
  Programming() {
    boards.BoardTable[0] = Wiring();
    line.InitPortShadows();
    timing.CalibrateSpeed();
    const auto image = Image(kImageBytes);
    std::copy(image.begin(), image.end(), images.CodeBuffer.begin());
    images.CodeMax = kImageBytes - 1;
    const std::int64_t before = timing.Increments;
    Run();  // while an access costs nothing: only to count
    accesses = port.accesses;
    increments = timing.Increments - before;
    port.Calibrate();
  }

  void Run() {
    isp.ProgramImage(view);
    view.Take();
  }

  std::unique_ptr<TickCounter> ticks = SystemTickCounter();
  BusyPort port{*ticks};
  IspBoards boards;
  IicPort line{port, boards, {}};
  tongxun::BusTiming timing{*ticks};
  tongxun::I2cMaster master{line, timing};
  tongxun::VskImages images;
  tongxun::IspFrames frames{master, timing};
  RunReport report{*ticks};
  IspOperations isp{frames, timing, images, report};
  Transcript view;
  std::int64_t accesses = 0;    // of one run
  std::int64_t increments = 0;  // of its delays
};

Programming& TheProgramming() {
  static const auto programming = std::make_unique<Programming>();
  return *programming;
}

void Count(benchmark::State& state, const Programming& programming) {
  state.counters["accesses"] = static_cast<double>(programming.accesses);
  state.counters["delay_increments"] = static_cast<double>(programming.increments);
  state.counters["steps_per_access"] = programming.port.StepsPerAccess();
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
  tongxun::BusTiming delay(*programming.ticks);  // not calibrated: a step is one increment
  for (auto _ : state) {
    for (std::int64_t i = 0; i < programming.accesses; ++i) port->DlPortWritePortUchar(0x378, 0);
    for (std::int64_t left = programming.increments; left > 0; left -= delay.BitDelayCount - 1) {
      delay.BitDelayCount = static_cast<std::int32_t>(std::min<std::int64_t>(left, 1 << 20) + 1);
      delay.BitDelay();
    }
  }
  Count(state, programming);
}
BENCHMARK(BareAccessesAndDelays)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(5);

}  // namespace
