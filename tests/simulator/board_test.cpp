// The simulated chip is no more lenient than a real one.
#include <gtest/gtest.h>

#include "support/vsk_rig.h"

namespace {

struct BoardTest : testing::Test, VskRig {
  simulator::SimulatedVsk& chip = board.vsk830;

  bool Send(int address, std::initializer_list<std::int16_t> bytes) {
    return frames.Send(address, bytes);
  }
};

TEST_F(BoardTest, SilentUntilAllCodesCameInOrder) {
  EXPECT_FALSE(Send(0x94, {0}));
  EXPECT_FALSE(Send(0x5A, {0xA4}));
  EXPECT_TRUE(Send(0x5A, {}));
  EXPECT_FALSE(chip.InIspMode()) << "one code of two";
  EXPECT_TRUE(Send(0x5A, {0xA5}));
  EXPECT_TRUE(chip.InIspMode());
  EXPECT_FALSE(Send(0x5A, {0xA5})) << "only A and C are answered in ISP mode";
}

TEST_F(BoardTest, RefusesWhatARealChipWouldNotTake) {
  EnterIspMode();
  EXPECT_FALSE(Send(0x94, {0, 1})) << "data without a page";
  EXPECT_FALSE(Send(0x96, {0xA1, 0})) << "the second bank of a chip with one";
  EXPECT_FALSE(Send(0x96, {0x77})) << "an unknown command";
  EXPECT_FALSE(Send(0x96, {0x68, 1})) << "erase all with a wrong argument";
  EXPECT_TRUE(Send(0x96, {0xA0, 0}));
  EXPECT_TRUE(Send(0x94, {0, 0x0F}));
  EXPECT_FALSE(Send(0x94, {0, 0x0E})) << "the page must be selected anew";
  EXPECT_TRUE(Send(0x96, {0xA0, 0}));
  EXPECT_TRUE(Send(0x94, {0, 0xF1}));
  EXPECT_EQ(chip.Bank(0).Cells()[0], 0x01) << "programming only clears bits";
  EXPECT_TRUE(Send(0x96, {0xA0, 0}));
  frames.IspTxBuf.fill(0);
  EXPECT_FALSE(frames.SendBuffer(0x94, 258, tongxun::AddressByte::Unchanged)) << "too long";
  int count = 256;
  EXPECT_FALSE(frames.IspReadFrame(0x94, count)) << "a read without a page";
  EXPECT_TRUE(Send(0x96, {0x30, 0}));
  EXPECT_FALSE(Send(0x96, {0xD0})) << "busy";
}

TEST_F(BoardTest, APowerCycleAndPluggingInEndIspModeAndKeepTheFlash) {
  EnterIspMode();
  Send(0x96, {0xA0, 0});
  Send(0x94, {0, 0x12});
  board.faults.busyForEver = true;
  Send(0x96, {0x30, 0x80});
  board.faults.sdaStuckLow = true;
  board.PowerCycle();
  EXPECT_FALSE(chip.InIspMode());
  EXPECT_TRUE(Send(0x5A, {0xA5})) << "what hung has ended";
  board.Connect(simulator::ConnectedChip::None);
  EXPECT_FALSE(Send(0x96, {0x48}));
  board.Connect(simulator::ConnectedChip::Vsk830);
  EXPECT_FALSE(chip.InIspMode());
  EXPECT_EQ(chip.Bank(0).Cells()[0], 0x12);
}

}  // namespace
