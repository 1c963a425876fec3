#include "bus/i2c_master.h"

#include <gtest/gtest.h>

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
