#include "vsk/isp_frames.h"

#include <gmock/gmock.h>

#include "support/line_trace.h"
#include "support/vsk_rig.h"

namespace {

struct IspFramesTest : testing::Test, VskRig {};

TEST_F(IspFramesTest, TheReadPhaseFollowsARefusedWritePhaseAndASilentChipHasCrc0) {
  board.Connect(simulator::ConnectedChip::None);
  frames.IspRxBuf.fill(0xBC);
  frames.HwCrc = 0x1234;
  EXPECT_FALSE(frames.IspWriteReadFrame(0x94, 1, 1));
  EXPECT_THAT(TakeFrames(), testing::ElementsAre("S 94- P", "S 95- P"));
  EXPECT_EQ(frames.IspRxBuf[0], 0xBC);
  frames.ReadHwCrc();
  EXPECT_EQ(frames.HwCrc, 0);
}

/// The delay before the CRC is read, and the bus released before the repeated START.
TEST(IspFramesOnTheLines, DelaysAroundReads) {
  TracedBus bus;
  tongxun::I2cMaster master(bus.port, bus.timing);
  tongxun::IspFrames frames(master, bus.timing);
  LineTrace& lines = bus.lines;
  frames.ReadHwCrc();
  EXPECT_THAT(lines.Take(), testing::StartsWith(".1 D1 C1 .1 D0 "));
  lines.sdaLow = {true};
  frames.IspWriteReadFrame(0x94, 0, 0);
  EXPECT_THAT(lines.Take(), testing::HasSubstr("? C0 .11 D1 C1 .1 D1 C1 .1 D0 .1 C0 "));
}

TEST_F(IspFramesTest, CountsBeyondTheBuffersTouchNoLine) {
  const std::uint64_t before = board.cable.Accesses();
  for (int count : {513, 1000, -2}) EXPECT_FALSE(frames.IspWriteFrame(0x94, count, true));
  for (int count : {514, -1}) EXPECT_FALSE(frames.IspReadFrame(0x94, count));
  EXPECT_FALSE(frames.IspWriteReadFrame(0x94, 513, 1));
  EXPECT_FALSE(frames.IspWriteReadFrame(0x94, 1, 514));
  EXPECT_EQ(board.cable.Accesses(), before);
  board.faults.sdaStuckLow = true;  // acknowledges all
  int most = 512;
  EXPECT_TRUE(frames.IspWriteFrame(0x94, most, true));
  most = 513;
  EXPECT_TRUE(frames.IspReadFrame(0x94, most));
}

}  // namespace
