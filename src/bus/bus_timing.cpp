#include "bus/bus_timing.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tongxun {

namespace {

using std::chrono::nanoseconds;

constexpr std::uint32_t kCalibration_ms = 1000;
// Short enough to lie between two moments in which another process has the processor, long enough
// for the clock's own reading to be lost in it.
constexpr std::int64_t kBurst = 10'000;
constexpr std::chrono::milliseconds kBetweenBursts{1};  // so that they tell of the whole second
// One burst in so many may be shorter than the one that counts. The shortest is not the usual one
// where the processor is quicker now and then. The middle one might be a disturbed one, and a bus
// that was measured with it too fast.
constexpr std::size_t kQuickShare = 8;
// What a bit delay grows by with each unit of `SpeedFactor`. The default factor, 2, then gives 70
// kHz on a port whose access takes 1 us, and read bits, which have only three delays, stay below
// 100 kHz.
constexpr double kDelayPerFactor_ns = 1250;

class BurstTimes {
 public:
  void Add(nanoseconds time) {
    if (count_ < times_.size()) times_[count_++] = time;
  }
  /// To be called last: it changes their order.
  nanoseconds Usual() {
    const auto usual = times_.begin() + count_ / kQuickShare;
    std::nth_element(times_.begin(), usual, times_.begin() + count_);
    return *usual;
  }

 private:
  std::array<nanoseconds, 1024> times_{};  // more than there are in a calibration's second
  std::size_t count_ = 0;
};

}  // namespace

void BusTiming::LongDelay() {
  for (int i = 0; i < 1001; ++i) ByteDelay();
}

void BusTiming::WaitMilliseconds(std::uint32_t duration_ms) {
  const std::uint32_t begin = ticks_.GetTickCount();
  while (ticks_.GetTickCount() - begin < duration_ms) {
  }
}

void BusTiming::CalibrateSpeed() {
  std::uint32_t now = ticks_.GetTickCount();
  const std::uint32_t begin = now;
  BurstTimes bursts;
  nanoseconds nextBurst = ticks_.FineTime();
  // A tick of bursts and a tick of readings, in turns. While another process has the processor
  // nothing is counted, so the largest count is the undisturbed one.
  TickPollCount = 0;
  while (now - begin < kCalibration_ms) {
    for (const std::uint32_t tick = now; now == tick; now = ticks_.GetTickCount()) {
      if (ticks_.FineTime() < nextBurst) continue;
      bursts.Add(TimeBurst());
      nextBurst = ticks_.FineTime() + kBetweenBursts;
    }
    TickPollCount = std::max(TickPollCount, PollOneTick(now));
  }
  TickPollCount = std::max(TickPollCount, PollOneTick(now));
  if (Calibrated) Calibrated(TickPollCount);

  const std::int32_t unit = TickPollCount / 1000;
  ByteDelayCount = unit * 6 * SpeedFactor;
  BitDelayCount = unit * SpeedFactor;
  incrementsPerStep_ = 1;
  const std::int32_t steps = BitDelayCount - 1;
  const nanoseconds usual = bursts.Usual();
  if (steps < 1 || usual == nanoseconds::max()) return;
  // The steps of a bit delay together take its time, however many they are: many short ones where
  // the tick counter is quick to read, few long ones where it is slow.
  const double increments_per_ns = kBurst / static_cast<double>(usual.count());
  incrementsPerStep_ = increments_per_ns * kDelayPerFactor_ns * SpeedFactor / steps;
}

/// The readings from just after a tick to the next one, and that included. `now` becomes the last.
std::int32_t BusTiming::PollOneTick(std::uint32_t& now) {
  std::int32_t count = 0;
  const std::uint32_t begin = ticks_.GetTickCount();
  do {
    now = ticks_.GetTickCount();
    ++count;
  } while (now - begin < 1);
  return count;
}

/// How long `kBurst` increments took; the longest time of all when the clock stood still.
nanoseconds BusTiming::TimeBurst() {
  const nanoseconds begin = ticks_.FineTime();
  Increment(kBurst);
  const nanoseconds took = ticks_.FineTime() - begin;
  return took > nanoseconds::zero() ? took : nanoseconds::max();
}

void BusTiming::Count(std::int32_t steps) {
  if (steps <= 0) return;
  Steps += steps;
  Increment(std::llround(steps * incrementsPerStep_));
}

void BusTiming::Increment(std::int64_t times) {
  // The delay is nothing but the number of its increments, so each must really be executed and take
  // its time. An atomic one is and does; a plain one, even of a volatile counter, some processors
  // shorten to a fraction of a trip to memory. Its memory order, the strictest, keeps what stands
  // before and behind the delay in place on processors that reorder more than x86 does.
  for (; times > 0; --times) ++Increments;
}

}  // namespace tongxun
