#include "bus/i2c_master.h"

#include <gtest/gtest.h>

#include <utility>

#include "support/recording_port.h"

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

  lines.sdaLow = {false};
  EXPECT_FALSE(master.I2cWriteByte(0x1FF));
  std::string zeros;
  for (int i = 0; i < 8; ++i) zeros += zero;
  EXPECT_EQ(lines.Take(), zeros + acknowledge) << "a value above 255 goes out as 0x00";
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

/// A PC whose time is what its readings of the tick counter and the increments of delays take, and
/// what other processes take: 0.3 ms after every 0.1 ms of the tool's, from `busyFrom_ms` on.
struct SimulatedPc final : TickCounter {
  double reading_ns, increment_ns, busyFrom_ms;
  tongxun::BusTiming timing{*this};

  SimulatedPc(double reading, double increment, double busyFrom)
      : reading_ns(reading), increment_ns(increment), busyFrom_ms(busyFrom) {}

  std::uint32_t GetTickCount() override {
    Pass(reading_ns + TakeIncrements_ns());
    return static_cast<std::uint32_t>(static_cast<int>(now_ns_ / kTick_ns) * 15.625);
  }
  std::chrono::nanoseconds FineTime() override {
    Pass(TakeIncrements_ns());
    return std::chrono::nanoseconds(static_cast<std::int64_t>(now_ns_));
  }
  double TakeIncrements_ns() {
    const std::int64_t before = std::exchange(seen_, timing.Increments);
    return static_cast<double>(seen_ - before) * increment_ns;
  }

  static constexpr double kTick_ns = 15.625e6;

 private:
  void Pass(double own_ns) {
    now_ns_ += own_ns;
    slice_ns_ += own_ns;
    if (slice_ns_ < 1e5 || now_ns_ < busyFrom_ms * 1e6) return;
    slice_ns_ = 0;
    now_ns_ += 3e5;
  }
  double now_ns_ = 0;
  double slice_ns_ = 0;
  std::int64_t seen_ = 0;
};

TEST(BusTiming, TheBusSpeedIsThatOfTheFactorOnEveryPc) {
  struct Row {
    double reading_ns, increment_ns, busyFrom_ms;
    std::int16_t factor;
  };
  constexpr double kNever = 1e9;
  const Row rows[] = {
      {20, 4.4, kNever, 2}, {20, 4.4, 900, 2},     {300, 2.3, 0, 2},    {1200, 4.4, 900, 2},
      {1200, 1, 0, 2},      {300, 2.3, kNever, 1}, {300, 2.3, 900, 10},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(&row - rows);
    SimulatedPc pc(row.reading_ns, row.increment_ns, row.busyFrom_ms);
    pc.timing.SpeedFactor = row.factor;
    pc.timing.CalibrateSpeed();
    pc.TakeIncrements_ns();
    pc.timing.BitDelay();
    const double delay_ns = pc.TakeIncrements_ns();

    EXPECT_EQ(pc.timing.Steps, pc.timing.BitDelayCount - 1);
    EXPECT_NEAR(delay_ns, 1250. * row.factor, row.increment_ns);
    if (row.busyFrom_ms > 0) {
      const double undisturbed = SimulatedPc::kTick_ns / row.reading_ns;
      EXPECT_NEAR(pc.timing.TickPollCount, undisturbed, undisturbed / 100);
    }
  }
}

TEST(BusTiming, CalibratesAgainstOneWholeTickAlsoAcrossTheWrap) {
  struct Row {
    std::uint32_t readingsPerTick, start;
    std::int16_t speed;
    std::int32_t bit, byte;
  };
  const Row rows[] = {
      {15000, 0, 2, 30, 180},
      {15999, 0, 1, 15, 90},
      {999, 0, 10, 0, 0},
      {15000, 0xFFFFFFFF - 500, 2, 30, 180},
      {15000, 0xFFFFFFFF - 1003, 5, 75, 450},
      {15000, 0xFFFFFFFF - 1010, 2, 30, 180},  // within the tick that is counted
  };
  for (const Row& row : rows) {
    FakeTicks ticks(row.readingsPerTick, row.start);
    tongxun::BusTiming timing(ticks);
    std::int32_t told = 0;
    timing.Calibrated = [&](std::int32_t count) { told = count; };
    timing.SpeedFactor = row.speed;
    timing.CalibrateSpeed();
    // The wait ends with the first reading of a tick and the second phase begins with its second
    // reading; the last one counted is the first of the next tick.
    EXPECT_NEAR(timing.TickPollCount, row.readingsPerTick, 2) << row.start;
    EXPECT_EQ(told, timing.TickPollCount);
    EXPECT_GE(ticks.Elapsed(), 1000U) << "a whole second goes by first";
    EXPECT_NEAR(timing.BitDelayCount, row.bit, row.speed) << row.start;
    EXPECT_EQ(timing.ByteDelayCount, 6 * timing.BitDelayCount);
    EXPECT_EQ(timing.BitDelayCount, timing.TickPollCount / 1000 * row.speed);
  }
}

}  // namespace
