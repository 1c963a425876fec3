// The five line operations, and the port and board that they concern.
#include "bus/iic_port.h"

#include <gmock/gmock.h>

#include <string>

#include "support/line_trace.h"
#include "text/hex_text.h"

namespace {

/// Writes down the ports it is told to use, and the accesses, as words.
class PortLog final : public PortIo {
 public:
  std::optional<std::uint8_t> status = 0;
  bool there = true;

  bool StillThere() override { return there; }
  void UsePort(const PortUse& use) override {
    Word("use ", use.base, "");
    Word("sample ", use.sampled, " released " + HexText(use.data) + "," + HexText(use.control));
  }
  void DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) override {
    Word("", port, "=" + HexText(value));
  }
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t port) override {
    Word("", port, "?");
    return status;
  }
  std::string Take() { return std::exchange(words_, {}); }

 private:
  void Word(const char* before, std::uint32_t port, const std::string& behind) {
    words_ += (words_.empty() ? "" : " ");
    words_ += before + HexText(static_cast<std::int32_t>(port)) + behind;
  }

  std::string words_;
};

struct IicPortTest : testing::Test {
  PortLog io;
  IspBoards boards;
  std::vector<std::string> problems;
  IicPort port{io, boards, [this](const std::string& problem) { problems.push_back(problem); }};

  IicPortTest() {
    boards.BoardTable[0] = TraceBoard();
    port.InitPortShadows();
    port.SetSdaHigh();  // announces the port
    io.Take();
  }
};

TEST_F(IicPortTest, EveryLineOperationIsOneWriteWithTheShadowInTheOtherBits) {
  struct Row {
    LineSpec sdaOut, sclOut;  // their addresses play no part
    const char* writes;       // SDA high, SDA low, SCL high, SCL low
  };
  for (const Row& row : {Row{{0, true, 0x80}, {0, true, 0x01}, "378=FF 378=7F 37A=1 37A=0"},
                         {{0, true, 0x01}, {0, false, 0x01}, "378=7F 378=7E 37A=0 37A=1"},
                         {{1, false, 0x80}, {1, true, 0x08}, "378=7F 378=FF 37A=8 37A=0"},
                         {{}, {}, "378=7F 378=7F 37A=0 37A=0"}}) {
    boards.BoardTable[0].SdaOut = row.sdaOut;
    boards.BoardTable[0].SclOut = row.sclOut;
    port.SetSdaHigh();
    port.SetSdaLow();
    port.SetSclHigh();
    port.SetSclLow();
    EXPECT_EQ(io.Take(), row.writes);
  }
}

TEST_F(IicPortTest, SamplesSdaWithTheMaskAndThePolarity) {
  for (const LineSpec& line : {LineSpec{0, true, 0x40}, {0, false, 0x40}, {0, false, 0x80}}) {
    boards.BoardTable[0].SdaIn = line;
    io.status = static_cast<std::uint8_t>(line.mask);
    EXPECT_EQ(port.SdaIsLow(), line.polarity) << line.mask;
    io.status = static_cast<std::uint8_t>(~line.mask);
    EXPECT_EQ(port.SdaIsLow(), !line.polarity) << line.mask;
    io.status = std::nullopt;
    EXPECT_FALSE(port.SdaIsLow()) << "no port";
    EXPECT_EQ(io.Take(), "379? 379? 379?");
  }
  EXPECT_TRUE(problems.empty());
}

TEST_F(IicPortTest, ABoardWithoutCompleteWiringIsToldOnceAndReadsHigh) {
  boards.LoadPortConfig("some/InitPort.csv", [] {});
  boards.LoadCurrentBoard("some/CurrIspBoard.csv", [] {});
  boards.CurrentBoard = 7;
  for (LineSpec IspBoard::*line : {&IspBoard::SdaOut, &IspBoard::SdaIn, &IspBoard::SclOut}) {
    for (const std::uint8_t status : std::initializer_list<std::uint8_t>{0x00, 0xFF}) {
      boards.BoardTable[7] = TraceBoard();
      (boards.BoardTable[7].*line).mask = 0;
      io.status = status;
      EXPECT_FALSE(port.SdaIsLow());
    }
  }
  using testing::HasSubstr;
  EXPECT_THAT(problems, testing::ElementsAre(testing::AllOf(
                            HasSubstr("number 7"), HasSubstr("some/InitPort.csv, or"),
                            HasSubstr("use, some/CurrIspBoard.csv,"))));
  // Also at the first use of a port, which may be a frame without a sample.
  IicPort other(io, boards, [this](const std::string& problem) { problems.push_back(problem); });
  other.SetSdaHigh();
  EXPECT_EQ(problems.size(), 2U);
}

TEST_F(IicPortTest, AChangedBoardOrAddressCountsAtTheNextCallAndAPortIsAnnouncedOnce) {
  boards.BoardTable[20] = TraceBoard();
  boards.BoardTable[20].SdaOut.mask = 0x80;
  port.SetSdaHigh();
  boards.CurrentBoard = 20;
  port.SetSdaHigh();
  port.PortBase = 0xEC00;
  port.SdaIsLow();
  port.SetSclLow();
  EXPECT_EQ(io.Take(), "378=7F 378=FF use EC00 sample 40 released FF,1 EC01? EC02=0");

  port.PortBase = 0xEC02;  // its data register is the old control register
  port.SetSclLow();
  port.PortBase = 0;  // never used, never announced
  port.PortBase = 0xEC02;
  port.SetSdaHigh();
  EXPECT_EQ(io.Take(), "use EC02 sample 40 released FF,1 EC04=0 EC02=FF");
  port.ReopenPort();
  port.SetSdaHigh();
  EXPECT_EQ(io.Take(), "use EC02 sample 40 released FF,1 EC02=FF");
}

TEST_F(IicPortTest, OnlyAPortInUseIsLookedForAndReleased) {
  EXPECT_TRUE(port.StillThere());
  io.there = false;
  EXPECT_FALSE(port.StillThere());
  port.ReopenPort();
  EXPECT_TRUE(port.StillThere());
  port.ReleaseLines();
  EXPECT_EQ(io.Take(), "");
}

}  // namespace
