#include "vsk/isp_frames.h"

#include <gmock/gmock.h>

#include "support/line_trace.h"
#include "support/scripted_target.h"
#include "support/vsk_rig.h"

namespace {

using testing::ElementsAre;

struct IspFramesTest : testing::Test {
  ScriptedTarget target;
  std::unique_ptr<VskRig> rig = std::make_unique<VskRig>();
  tongxun::IspFrames& frames = rig->frames;

  IspFramesTest() { rig->board.wire.Connect(&target); }
  ~IspFramesTest() override { rig->board.wire.Connect(nullptr); }

  std::vector<std::string> Lines() { return rig->TakeFrames(); }
};

TEST_F(IspFramesTest, WriteFrames) {
  frames.IspTxBuf = {0x12, 0x34, 0x56};
  struct Case {
    int address, count;
    bool stop;
    const char* frame;
  };
  for (const Case& c :
       {Case{0x95, 2, true, "S 94 12 34 P"}, {0x94, 0, false, "S 94"}, {0x94, -1, true, "S P"}}) {
    int count = c.count;
    EXPECT_TRUE(frames.IspWriteFrame(c.address, count, c.stop));
    EXPECT_EQ(count, 0);
    EXPECT_THAT(Lines(), ElementsAre(c.frame));
  }
  for (const auto& [refuse, line] : {std::pair{0, "S 94- P"}, {2, "S 94 12 34- P"}}) {
    target.refuse = refuse;
    int count = 3;
    EXPECT_FALSE(frames.IspWriteFrame(0x94, count, false));
    EXPECT_THAT(Lines(), ElementsAre(line)) << "ended with a STOP";
  }
}

TEST_F(IspFramesTest, ReadFramesAcknowledgeAllButTheLastByte) {
  target.replies = {0x12, 0x34, 0x56, 0x9A, 0xBC};
  frames.IspRxBuf[5] = 77;
  frames.ReadHwCrc();
  EXPECT_EQ(frames.HwCrc, 0x9ABC);
  EXPECT_THAT(Lines(), ElementsAre("S 97 [12] [34] [56] [9A] [BC]- P"));
  EXPECT_EQ(frames.IspRxBuf[5], 77);
  int count = 1;
  EXPECT_TRUE(frames.IspReadFrame(0x94, count));
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(frames.IspWriteReadFrame(0x94, 1, 1));
  EXPECT_THAT(Lines(), ElementsAre("S 95 [BC]- P", "S 94 00 Sr 95 [BC]- P"));

  target.refuse = 0;
  EXPECT_FALSE(frames.IspWriteReadFrame(0x94, 1, 1)) << "the read phase follows all the same";
  EXPECT_THAT(Lines(), ElementsAre("S 94- P", "S 95- P"));
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
  const std::uint64_t before = rig->board.cable.Accesses();
  for (int count : {513, 1000, -2}) EXPECT_FALSE(frames.IspWriteFrame(0x94, count, true));
  for (int count : {514, -1}) EXPECT_FALSE(frames.IspReadFrame(0x94, count));
  EXPECT_FALSE(frames.IspWriteReadFrame(0x94, 513, 1));
  EXPECT_FALSE(frames.IspWriteReadFrame(0x94, 1, 514));
  EXPECT_EQ(rig->board.cable.Accesses(), before);
  int most = 512;
  EXPECT_TRUE(frames.IspWriteFrame(0x94, most, true));
  most = 513;
  EXPECT_TRUE(frames.IspReadFrame(0x94, most));
}

}  // namespace
