// What the software adds to the port accesses and delays that programming, reading and comparing
// consist of.
#include <benchmark/benchmark.h>

#include <chrono>
#include <map>
#include <memory>
#include <streambuf>

#include "support/board_rig.h"
#include "support/images.h"
#include "support/transcript.h"
#include "terminal/vsk_job.h"

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

struct Silent final : std::streambuf {};

/// What moves 64 KiB over the bus. Built once: what is measured and what it is measured against use
/// the same delays and the same port.
class Work {
 public:
  enum Kind { Program, Read, Compare };

  explicit Work(Kind kind) : kind_(kind) {
    tool_->boards.BoardTable[0] = Wiring();
    tool_->port.InitPortShadows();
    tool_->timing.CalibrateSpeed();
    const auto image = Image(kImageBytes);
    std::copy(image.begin(), image.end(), tool_->vskImages.CodeBuffer.begin());
    tool_->vskImages.CodeMax = kImageBytes - 1;
    line_.command = kind == Compare ? terminal::Command::Compare : terminal::Command::Read;
    line_.model = VskChip::Vsk830;
    const std::int64_t before = tool_->timing.Increments;
    Run();  // while an access costs nothing: only to count
    accesses = port.accesses;
    increments = tool_->timing.Increments - before;
    port.Calibrate();
  }

  void Run() {
    if (kind_ == Program) {
      tool_->isp.ProgramImage(view_);
      view_.Take();
      return;
    }
    terminal::VskJob job(*tool_, line_, narrator_, [] { return false; });
    terminal::Outcome outcome;
    tool_->isp.IspModeOn = false;
    job.Run(outcome);
  }

  std::unique_ptr<TickCounter> ticks = SystemTickCounter();
  BusyPort port{*ticks};
  std::int64_t accesses = 0;    // of one run
  std::int64_t increments = 0;  // of its delays

 private:
  const Kind kind_;
  std::unique_ptr<Tool> tool_ = std::make_unique<Tool>(port, *ticks, Directories{}, Problem{});
  Transcript view_;
  Silent nowhere_;
  std::ostream err_{&nowhere_};
  terminal::Narrator narrator_{err_, false, true, *ticks};
  terminal::CommandLine line_;
};

Work& TheWork(std::int64_t kind) {
  static std::map<std::int64_t, std::unique_ptr<Work>> all;
  auto& work = all[kind];
  if (!work) work = std::make_unique<Work>(static_cast<Work::Kind>(kind));
  return *work;
}

void Count(benchmark::State& state, const Work& work) {
  state.counters["accesses"] = static_cast<double>(work.accesses);
  state.counters["delay_increments"] = static_cast<double>(work.increments);
  state.counters["steps_per_access"] = work.port.StepsPerAccess();
}

void Move64KiB(benchmark::State& state) {
  Work& work = TheWork(state.range(0));
  for (auto _ : state) work.Run();
  Count(state, work);
}
BENCHMARK(Move64KiB)
    ->DenseRange(Work::Program, Work::Compare)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(5);

void BareAccessesAndDelays(benchmark::State& state) {
  Work& work = TheWork(state.range(0));
  PortIo* port = &work.port;
  benchmark::DoNotOptimize(port);
  tongxun::BusTiming delay(*work.ticks);  // not calibrated: a step is one increment
  for (auto _ : state) {
    for (std::int64_t i = 0; i < work.accesses; ++i) port->DlPortWritePortUchar(0x378, 0);
    for (std::int64_t left = work.increments; left > 0; left -= delay.BitDelayCount - 1) {
      delay.BitDelayCount = static_cast<std::int32_t>(std::min<std::int64_t>(left, 1 << 20) + 1);
      delay.BitDelay();
    }
  }
  Count(state, work);
}
BENCHMARK(BareAccessesAndDelays)
    ->DenseRange(Work::Program, Work::Compare)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(5);

}  // namespace
