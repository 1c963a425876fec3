// The bus clock that calibrations lead to: on PCs whose tick counter is quick or slow to read and
// goes in small or large steps, idle or busy, and for every speed factor.
#include <benchmark/benchmark.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include "bus/i2c_master.h"
#include "support/line_trace.h"

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::nanoseconds;

void SpendUntil(Clock::time_point end) {
  while (Clock::now() < end) {
  }
}

/// The machine's tick counter, whose every reading takes `cost`.
class SlowTicks final : public TickCounter {
 public:
  explicit SlowTicks(nanoseconds cost) : cost_(cost) {}
  std::uint32_t GetTickCount() override {
    const Clock::time_point begin = Clock::now();
    const std::uint32_t value = ticks_->GetTickCount();
    SpendUntil(begin + cost_);
    return value;
  }

 private:
  nanoseconds cost_;
  std::unique_ptr<TickCounter> ticks_ = SystemTickCounter();
};

/// A tick counter in memory, where a reading takes about 2 ns; a thread advances it.
class MemoryTicks final : public TickCounter {
 public:
  explicit MemoryTicks(std::chrono::microseconds step) : step_(step) {}
  std::uint32_t GetTickCount() override { return value_.load(std::memory_order_relaxed); }

 private:
  void Advance(const std::stop_token& stop) {
    auto sinceStart = step_;
    for (const auto start = Clock::now(); !stop.stop_requested(); sinceStart += step_) {
      std::this_thread::sleep_until(start + sinceStart);
      value_ = static_cast<std::uint32_t>(sinceStart / std::chrono::milliseconds(1));
    }
  }

  const std::chrono::microseconds step_;
  std::atomic<std::uint32_t> value_ = 0;
  std::jthread advancing_{[this](const std::stop_token& stop) { Advance(stop); }};
};

/// `cost_ns`: 2, or 0 for the machine's own, or any that is larger than that. `step_us`: of a
/// counter in memory; the machine's own one has 15,625.
std::unique_ptr<TickCounter> Ticks(std::int64_t cost_ns, std::int64_t step_us) {
  if (cost_ns == 0) return SystemTickCounter();
  if (cost_ns == 2) return std::make_unique<MemoryTicks>(std::chrono::microseconds(step_us));
  return std::make_unique<SlowTicks>(nanoseconds(cost_ns));
}

/// Twice as many busy processes as there are processors.
class BusyProcesses {
 public:
  BusyProcesses() {
    for (unsigned left = 2 * std::thread::hardware_concurrency(); left > 0; --left) {
      const pid_t id = fork();
      if (id == 0) StayBusy();
      if (id > 0) ids_.push_back(id);
    }
  }
  ~BusyProcesses() {
    for (const pid_t id : ids_) kill(id, SIGKILL);
    for (const pid_t id : ids_) waitpid(id, nullptr, 0);
  }
  BusyProcesses(const BusyProcesses&) = delete;
  BusyProcesses& operator=(const BusyProcesses&) = delete;

 private:
  [[noreturn]] static void StayBusy() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (std::atomic<int> i = 0;; ++i) {
    }
  }
  std::vector<pid_t> ids_;
};

double Median_us(std::vector<nanoseconds>& times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return std::chrono::duration<double, std::micro>(*middle).count();
}

/// A port whose every access takes `access`, and that notes when SCL rises.
class ClockedPort final : public PortIo {
 public:
  explicit ClockedPort(nanoseconds access) : access_(access) {}

  std::vector<Clock::time_point> rises;

  void DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) override {
    const Clock::time_point begin = Clock::now();
    if (port != IicPort::kDefaultPortBase && (value & 1) != 0) rises.push_back(begin);
    SpendUntil(begin + access_);
  }
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t) override {
    SpendUntil(Clock::now() + access_);
    return 0;
  }

  /// 1 / the median time between two rises, and forgets them. Kept from the processor now and then,
  /// the thread still finds most periods undisturbed.
  double TakeFrequency_kHz() {
    std::vector<nanoseconds> periods;
    for (std::size_t i = 1; i < rises.size(); ++i) periods.push_back(rises[i] - rises[i - 1]);
    rises.clear();
    return 1000 / Median_us(periods);
  }

 private:
  const nanoseconds access_;
};

/// The bus of a tool that has just started.
struct Bus {
  Bus(TickCounter& ticks, std::int64_t factor, nanoseconds access = std::chrono::microseconds(1))
      : io(access), timing(ticks) {
    boards.BoardTable[0] = TraceBoard();
    port.InitPortShadows();
    timing.SpeedFactor = static_cast<std::int16_t>(factor);
    timing.CalibrateSpeed();
  }
  double WrittenBits_kHz() {
    for (int i = 0; i < 1000; ++i) master.I2cWriteByte(i & 0xFF);
    return io.TakeFrequency_kHz();
  }
  double ReadBits_kHz() {
    for (int i = 0; i < 1000; ++i) master.I2cReadByte(0);
    return io.TakeFrequency_kHz();
  }
  double BitDelay_us() {
    constexpr int kAtATime = 10;  // so that the clock's own readings are lost in it
    std::vector<nanoseconds> times(1000);
    for (nanoseconds& time : times) {
      const Clock::time_point begin = Clock::now();
      for (int i = 0; i < kAtATime; ++i) timing.BitDelay();
      time = Clock::now() - begin;
    }
    return Median_us(times) / kAtATime;
  }

  ClockedPort io;
  IspBoards boards;
  IicPort port{io, boards, {}};
  tongxun::BusTiming timing;
  tongxun::I2cMaster master{port, timing};
};

/// Arguments: the speed factor, what a reading takes and a tick (see `Ticks`), whether the PC is
/// busy.
void Scl(benchmark::State& state) {
  const auto ticks = Ticks(state.range(1), state.range(2));
  for (auto _ : state) {
    auto load = state.range(3) != 0 ? std::make_unique<BusyProcesses>() : nullptr;
    const Clock::time_point begin = Clock::now();
    Bus bus(*ticks, state.range(0));
    const std::chrono::duration<double> held = Clock::now() - begin;
    state.SetIterationTime(held.count());
    state.counters["TickPollCount"] = bus.timing.TickPollCount;
    state.counters["written_kHz"] = bus.WrittenBits_kHz();
    state.counters["read_kHz"] = bus.ReadBits_kHz();
    load.reset();
    state.counters["written_after_kHz"] = bus.WrittenBits_kHz();
    state.counters["delay_after_us"] = bus.BitDelay_us();
  }
}
BENCHMARK(Scl)
    ->ArgsProduct({{2}, {0, 2, 300, 1200}, {15625}, {0, 1}})
    ->ArgsProduct({{2}, {2}, {1000, 10000, 55000}, {0}})
    ->ArgsProduct({{1, 3, 4, 5, 6, 7, 8, 9, 10}, {0}, {15625}, {0}})
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(3);

/// Argument: what a port access takes, in us.
void SclByAccess(benchmark::State& state) {
  const auto ticks = SystemTickCounter();
  for (auto _ : state) {
    Bus bus(*ticks, 2, std::chrono::microseconds(state.range(0)));
    state.counters["written_kHz"] = bus.WrittenBits_kHz();
  }
}
BENCHMARK(SclByAccess)->Arg(1)->Arg(2)->Arg(5)->Iterations(1)->Repetitions(3);

}  // namespace
