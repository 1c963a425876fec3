// The waits on status bits, against a target that answers from a list: which reading ends them,
// what never counts, and how long they last.
#include <gmock/gmock.h>

#include <deque>
#include <limits>

#include "support/rtd_rig.h"

namespace {

using tongxun2120::Bank;
using tongxun2120::RtdLog;

/// Answers from a list.
class ScriptedTarget final : public simulator::I2cTarget {
 public:
  std::deque<std::uint8_t> replies{0xFF};  // the last one is repeated
  int addressesAnswered = std::numeric_limits<int>::max();
  int reads = 0;

  void OnStart() override {}
  void OnStop() override {}
  bool OnAddress(std::uint8_t) override { return addressesAnswered-- > 0; }
  bool OnWrite(std::uint8_t) override { return true; }
  std::uint8_t OnRead() override {
    ++reads;
    const std::uint8_t reply = replies.front();
    if (replies.size() > 1) replies.pop_front();
    return reply;
  }
  void OnUnplugged() override {}
};

struct RtdWaitsTest : testing::Test, RtdRig {
  ScriptedTarget target;

  RtdWaitsTest() { board.wire.Connect(&target); }
  ~RtdWaitsTest() override { board.wire.Connect(nullptr); }
};

TEST_F(RtdWaitsTest, WhichReadingEndsTheCrcWait) {
  using Replies = std::deque<std::uint8_t>;  // the range is set, the statuses, the CRC
  for (const Replies& replies : {Replies{0x40, 0x40, 0x5A},
                                 {0x40, 0x00, 0x5A},
                                 {0x40, 0x80, 0xC0, 0x5A},
                                 {0x40, 0xC0, 0xC0, 0x5A},
                                 {0x40, 0x80, 0x80, 0x00, 0x5A}}) {
    target.replies = replies;
    target.reads = 0;
    RtdLog log(view);
    EXPECT_EQ(operations.RtdReadCrc(Bank::First, log), 0x5A);
    EXPECT_EQ(target.reads, std::ssize(replies));
  }
}

TEST_F(RtdWaitsTest, EveryWaitEndsAfterTenSeconds) {
  const std::deque<std::uint8_t> erasing{0x80}, settingRange{0x08}, running{0x00, 0x80};
  for (const auto& replies : {erasing, settingRange, running}) {
    target.replies = replies;
    RtdLog log(view);
    const std::uint32_t begin = ticks.Elapsed();
    const bool done = replies == erasing ? operations.RtdEraseChip(log)
                                         : operations.RtdReadCrc(Bank::First, log).has_value();
    EXPECT_FALSE(done);
    EXPECT_NEAR(ticks.Elapsed() - begin, 10'015, 15);
    EXPECT_THAT(view.Take(), testing::ElementsAre("red MCU link error\r\n"));
  }
}

/// The old reading in the buffer would end every wait at once.
TEST_F(RtdWaitsTest, AReadThatWasNotAcknowledgedNeverCounts) {
  target.replies = {0x00};
  link.RtdRxBuf[0] = 0x00;
  target.addressesAnswered = 0;
  EXPECT_FALSE(link.RtdWaitBitsClear(0x90, 0x10));
  EXPECT_EQ(link.RtdPollCount, 5001);
  target.addressesAnswered = 0;
  RtdLog erase(view);
  EXPECT_FALSE(operations.RtdEraseChip(erase));
  for (const int answered : {3, 5, 6, 8}) {  // at the range, the request, the status, the result
    target.addressesAnswered = answered;
    target.replies = {0x00};
    RtdLog log(view);
    EXPECT_EQ(operations.RtdReadCrc(Bank::First, log), std::nullopt) << answered;
    EXPECT_EQ(view.text, "MCU link error\r\n") << answered;
  }
  target.addressesAnswered = 10;
  RtdLog log(view);
  EXPECT_EQ(operations.RtdReadCrc(Bank::First, log), 0x00) << "all ten are needed";
  target.addressesAnswered = 10;
  EXPECT_FALSE(link.RtdEnterIsp()) << "an answer that is not the first bank's";
}

TEST_F(RtdWaitsTest, ARunEndsWithALongDelay) {
  target.replies = {0x40};
  timing.ByteDelayCount = 3;
  const std::int64_t before = timing.Steps;
  writer.Run(view);  // nothing is loaded: two writes to enter, one to leave
  EXPECT_EQ(timing.Steps - before, 3 * 2 + 1001 * 2);
}

}  // namespace
