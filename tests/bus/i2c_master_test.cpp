#include "bus/i2c_master.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "support/line_trace.h"

namespace {

struct I2cMasterTest : testing::Test, TracedBus {
  tongxun::I2cMaster master{port, timing};
};

TEST_F(I2cMasterTest, StartAndStopInTheirExactOrder) {
  master.I2cStart();
  EXPECT_EQ(lines.Take(), "D1 C1 .1 D0 .1 C0 .1");
  master.I2cStop();
  EXPECT_EQ(lines.Take(), ".1 D1 .1 D0 C1 .1 D1");
}

TEST_F(I2cMasterTest, AWrittenByteTakesEightDataClocksAndTheAcknowledgeClock) {
  const std::string one = "C0 .1 D1 .1 C1 .1 C0 .1 ";
  const std::string zero = "C0 .1 D0 .1 C1 .1 C0 .1 ";
  const std::string acknowledge = "D1 .1 C1 .1 ? C0 .11";
  lines.sdaLow = {true};
  EXPECT_TRUE(master.I2cWriteByte(0xA5));
  EXPECT_EQ(lines.Take(), one + zero + one + zero + zero + one + zero + one + acknowledge);

  EXPECT_FALSE(master.I2cWriteByte(0x1FF));
  const std::string half = zero + zero + zero + zero;
  EXPECT_EQ(lines.Take(), half + half + acknowledge) << "a value above 255 goes out as 0x00";
}

TEST_F(I2cMasterTest, AReadByteEndsWithTheMastersAcknowledge) {
  std::string bits = ".1 C1 .1 ? C0 ";
  for (int i = 1; i < 8; ++i) bits += ".2 C1 .1 ? C0 ";
  lines.sdaLow = {true, true, false, false, false, false, true, true};
  EXPECT_EQ(master.I2cReadByte(1), 0x3C);
  EXPECT_EQ(lines.Take(), bits + ".1 C0 .1 D1 .1 C1 .1 C0 .1 D1");
  EXPECT_EQ(master.I2cReadByte(0), 0xFF) << "nobody drives SDA";
  EXPECT_EQ(lines.Take(), bits + ".1 C0 .1 D0 .1 C1 .1 C0 .1 D1");
}

TEST_F(I2cMasterTest, DelaysCountOneStepLessThanTheirCount) {
  for (const std::int32_t count : {-1, 0, 1, 2, 180}) {
    timing.BitDelayCount = count;
    const std::int64_t before = timing.Steps;
    timing.BitDelay();
    EXPECT_EQ(timing.Steps - before, std::max(count - 1, 0));
  }
  timing.ByteDelayCount = 180;
  const std::int64_t before = timing.Steps;
  timing.LongDelay();
  EXPECT_EQ(timing.Steps - before, 1001 * 179);
}

/// What happens on a PC while the bus is calibrated. Spells are told as how often one begins, and
/// how much of it there is, in milliseconds.
struct History {
  const char* what;
  double busyFrom_ms = 1e9, busyUntil_ms = 1e9;  // other processes run, too
  double own_ms = 0.1, others_ms = 0.3;          // they take the processor in turns
  double oddEvery_ms = 1, oddFor_ms = 0;         // spells of another pace
  double pace = 1;                               // what an increment takes in them, in usual ones
};

/// A PC whose time is what its readings of the tick counter and the increments of delays take, and
/// what other processes take.
struct SimulatedPc final : TickCounter {
  double reading_ns, increment_ns;
  History history;
  std::uint32_t start_ms;
  double now_ns = 0;
  tongxun::BusTiming timing{*this};

  SimulatedPc(double reading, double increment, const History& what, std::uint32_t start = 0)
      : reading_ns(reading), increment_ns(increment), history(what), start_ms(start) {}

  std::uint32_t GetTickCount() override {
    Pass(reading_ns + TakeIncrements() * increment_ns * Pace());
    return start_ms + static_cast<std::uint32_t>(static_cast<int>(now_ns / kTick_ns) * 15.625);
  }
  std::chrono::nanoseconds FineTime() override {
    Pass(TakeIncrements() * increment_ns * Pace());
    return std::chrono::nanoseconds(static_cast<std::int64_t>(now_ns));
  }
  double TakeIncrements() {
    const std::int64_t before = std::exchange(seen_, timing.Increments);
    return static_cast<double>(seen_ - before);
  }
  /// Of an undisturbed bit delay.
  double BitDelay_ns() {
    TakeIncrements();
    timing.BitDelay();
    return TakeIncrements() * increment_ns;
  }

  static constexpr double kTick_ns = 15.625e6;

 private:
  double Pace() const {
    if (history.oddFor_ms == 0) return 1;
    const bool odd = std::fmod(now_ns, history.oddEvery_ms * 1e6) < history.oddFor_ms * 1e6;
    return odd ? history.pace : 1;
  }
  void Pass(double own_ns) {
    now_ns += own_ns;
    slice_ns_ += own_ns;
    const bool busy = now_ns >= history.busyFrom_ms * 1e6 && now_ns < history.busyUntil_ms * 1e6;
    if (slice_ns_ < history.own_ms * 1e6 || !busy) return;
    slice_ns_ = 0;
    now_ns += history.others_ms * 1e6;
  }
  double slice_ns_ = 0;
  std::int64_t seen_ = 0;
};

/// Also across the wrap of the tick counter: within the first second, and at each of the two ticks
/// behind it.
TEST(BusTiming, TheBusSpeedIsThatOfTheFactorOnEveryPc) {
  struct Row {
    double reading_ns, increment_ns, busyFrom_ms;
    std::int16_t factor;
    std::uint32_t start = 0;
  };
  constexpr double kNever = 1e9;
  const Row rows[] = {{20, 4.4, kNever, 2},
                      {20, 4.4, 900, 2},
                      {300, 2.3, 0, 2},
                      {1200, 4.4, 900, 2},
                      {1200, 1, 0, 2},
                      {300, 2.3, kNever, 1},
                      {300, 2.3, 900, 10},
                      {976, 2.3, kNever, 1, -500U},
                      {1042, 2.3, kNever, 5, -990U},
                      {1042, 2.3, kNever, 2, -1010U},
                      {1042, 2.3, kNever, 2, -1020U},
                      {15640, 2.3, kNever, 10}};  // the last one reads too slowly
  for (const Row& row : rows) {
    SCOPED_TRACE(&row - rows);
    SimulatedPc pc(row.reading_ns, row.increment_ns, {"", row.busyFrom_ms}, row.start);
    std::int32_t told = 0;
    pc.timing.Calibrated = [&](std::int32_t count) { told = count; };
    pc.timing.SpeedFactor = row.factor;
    pc.timing.CalibrateSpeed();
    EXPECT_GE(pc.now_ns, 1e9) << "a whole second goes by first";
    const double delay_ns = pc.BitDelay_ns();

    EXPECT_EQ(told, pc.timing.TickPollCount);
    EXPECT_EQ(pc.timing.BitDelayCount, told / 1000 * row.factor);
    EXPECT_EQ(pc.timing.ByteDelayCount, 6 * pc.timing.BitDelayCount);
    EXPECT_EQ(pc.timing.Steps, std::max(pc.timing.BitDelayCount - 1, 0));
    EXPECT_NEAR(delay_ns, told < 1000 ? 0 : 1250. * row.factor, row.increment_ns);
    const double undisturbed = SimulatedPc::kTick_ns / row.reading_ns;
    const double most = row.busyFrom_ms == 0 ? undisturbed : undisturbed / 100;
    EXPECT_NEAR(told, undisturbed, row.busyFrom_ms == kNever ? 2 : most);
  }
}

/// As long as meant, or longer, and on an idle PC not much longer.
TEST(BusTiming, ADisturbedCalibrationNeverGivesAFasterBus) {
  struct Row {
    History history;
    double longest;  // of what is meant
  };
  const Row rows[] = {
      {{.what = "idle"}, 1.002},
      {{.what = "one burst in 20 is quick", .oddEvery_ms = 1, .oddFor_ms = .05, .pace = .83}, 1.01},
      {{.what = "quick at first", .oddEvery_ms = 1e4, .oddFor_ms = 90, .pace = .83}, 1.01},
      {{.what = "quick spells", .oddEvery_ms = 110, .oddFor_ms = 10, .pace = .83}, 1.01},
      {{.what = "slow to wake up", .oddEvery_ms = 1e4, .oddFor_ms = 600, .pace = 3}, 1.01},
      {{.what = "busy", .busyFrom_ms = 0, .own_ms = 3, .others_ms = 9}, 1.01},
      {{.what = "short turns", .busyFrom_ms = 0}, 1.01},
      {{.what = "busy at first", .busyFrom_ms = 0, .busyUntil_ms = 700}, 1.01},
      {{.what = "mostly slowed down", .oddEvery_ms = 50, .oddFor_ms = 40, .pace = 1.3}, 1.01},
      {{.what = "busy, and often quick",
        .busyFrom_ms = 0,
        .own_ms = 2,
        .others_ms = 4,
        .oddEvery_ms = 10,
        .oddFor_ms = 3,
        .pace = .83},
       1.21},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.history.what);
    SimulatedPc pc(300, 4.4, row.history);
    pc.timing.CalibrateSpeed();
    const double meant_ns = 1250. * pc.timing.SpeedFactor;
    EXPECT_GE(pc.BitDelay_ns(), meant_ns * .998);
    EXPECT_LE(pc.BitDelay_ns(), meant_ns * row.longest);
  }
}

}  // namespace
