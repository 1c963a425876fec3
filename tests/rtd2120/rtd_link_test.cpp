// The link's sequences of line operations and delays, edge by edge.
#include "rtd2120/rtd_link.h"

#include <gtest/gtest.h>

#include "support/line_trace.h"

namespace {

struct RtdLinkTest : testing::Test, TracedBus {
  std::unique_ptr<tongxun2120::RtdLink> link = std::make_unique<tongxun2120::RtdLink>(port, timing);

  /// The eight data clocks of a byte and the acknowledge clock up to where it is sampled.
  static std::string Sent(int byte, const std::string& wait = ".1") {
    std::string text;
    for (int bit = 7; bit >= 0; --bit) {
      text += (byte >> bit & 1) != 0 ? ".1 C0 .1 D1 .1 C1 " : ".1 C0 .1 D0 .1 C1 ";
    }
    return text + ".1 C0 .1 D1 .1 C1 " + wait + " ";
  }
  /// The samples of `count` acknowledged bytes, and of one more line that is low.
  void Acknowledge(std::size_t count) { lines.sdaLow.insert(lines.sdaLow.end(), count, true); }
};

const std::string kIdle = "D1 C1 ";
const std::string kTwoBits = "C0 .1 C1 .1 ? .1 C0 .1 C1 .1 ? .1 ";
const std::string kSevenBits = kTwoBits + kTwoBits + kTwoBits + "C0 .1 C1 .1 ? .1 ";
const std::string kStart = ".1 D0 .1 C0 ";

TEST_F(RtdLinkTest, AWriteGoesOnWithoutAcknowledgesAndKeepsAStopThatDoesNotTake) {
  link->RtdTxBuf = {0x94, 0x36};
  EXPECT_EQ(link->RtdWriteBytes(2, 3), 1);
  EXPECT_EQ(lines.Take(), kIdle + kStart + Sent(0x94) + "? " + Sent(0x36) + "? .12 C0 .1 D0 ?");
  lines.sdaLow = {false, true, true};
  EXPECT_EQ(link->RtdWriteBytes(2, 3), 0) << "only the last byte's acknowledge counts";
  lines.Take();
  Acknowledge(1);
  EXPECT_EQ(link->RtdWriteBytes(0, 3), 0);
  EXPECT_EQ(lines.Take(), kIdle + kStart + ".12 C0 .1 D0 ? .1 C1 .1 D1");
  EXPECT_EQ(link->RtdWriteBytes(0, 0), 0);
  EXPECT_EQ(lines.Take(), kIdle + ".11");
}

TEST_F(RtdLinkTest, AReadAcknowledgesAllButTheLastByte) {
  Acknowledge(2);
  lines.sdaLow.insert(lines.sdaLow.end(), {true, false, true, true, true, true, true, true});
  EXPECT_EQ(link->RtdReadRegisters(0x95, 0x90, 2), 0);
  EXPECT_EQ(link->RtdRxBuf[0], 0x40);
  EXPECT_EQ(link->RtdRxBuf[1], 0xFF);
  const std::string bits = "D1 " + kSevenBits + "C0 .1 C1 .1 ? .2 ";
  EXPECT_EQ(lines.Take(), kIdle + kStart + Sent(0x94) + "? " + Sent(0x90) +
                              "? .1 C0 .1 C1 .1 D1 .1 D0 .1 C0 " + Sent(0x95) + bits +
                              "C0 .1 D0 .1 C1 .2 C0 " + bits + "C0 .1 C1 .2 C0 .1 D0 .1 C1 .1 D1");
  Acknowledge(2);
  EXPECT_EQ(link->RtdReadRegisters(0x94, 0x90, 0), 0);
  EXPECT_EQ(link->RtdRxBuf[0], 0x40);
}

TEST_F(RtdLinkTest, ARefusedReadEndsAtOnceWithBothLinesHigh) {
  link->RtdRxBuf[0] = 5;
  EXPECT_EQ(link->RtdReadRegisters(0x94, 0x90, 1), 1);
  EXPECT_EQ(lines.Take(), kIdle + kStart + Sent(0x94) + "?");
  lines.sdaLow = {true, false};
  EXPECT_EQ(link->RtdReadRegisters(0x94, 0x90, 1), 1);
  EXPECT_EQ(lines.Take(), kIdle + kStart + Sent(0x94) + "? " + Sent(0x90) + "?");
  EXPECT_EQ(link->RtdRxBuf[0], 5);
}

TEST_F(RtdLinkTest, CountsBeyondTheBuffersTouchNoLine) {
  for (const int beyond : {-1, 22}) {
    EXPECT_EQ(link->RtdReadRegisters(0x94, 0x90, beyond), 1);
    EXPECT_EQ(link->RtdWriteBytes(beyond, 3), 1);
  }
  for (const int beyond : {-1, 260}) EXPECT_EQ(link->RtdWritePage(beyond, 3), 1);
  EXPECT_EQ(lines.Take(), "");
  Acknowledge(21 + 1 + 259 + 1 + 2);
  EXPECT_EQ(link->RtdWriteBytes(21, 3), 0);
  EXPECT_EQ(link->RtdWritePage(259, 3), 0);
  EXPECT_EQ(link->RtdReadRegisters(0x94, 0x90, 21), 0);
}

TEST_F(RtdLinkTest, PageWriteWaitsLongerForEachAcknowledge) {
  link->RtdPageIndex = 3;
  link->RtdPageTable[3] = {0x94, 0x94, 0xA5};
  Acknowledge(4);
  EXPECT_EQ(link->RtdWritePage(3, 3), 0);
  EXPECT_EQ(lines.Take(), kIdle + kStart + Sent(0x94, ".3") + "? " + Sent(0x94, ".3") + "? " +
                              Sent(0xA5, ".3") + "? .12 C0 .1 D0 ? .1 C1 .1 D1");
}

}  // namespace
