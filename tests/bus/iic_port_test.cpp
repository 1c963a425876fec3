// The five line operations, and the port and board that they concern.
#include "bus/iic_port.h"

#include <gtest/gtest.h>

#include <string>

#include "bus/isp_boards.h"
#include "support/recording_port.h"
#include "text/hex_text.h"

namespace {

std::string Hex(std::uint32_t value) { return HexText(static_cast<std::int32_t>(value)); }

/// Writes down the ports it is told to use, and the accesses, as words.
class PortLog final : public PortIo {
 public:
  std::optional<std::uint8_t> status = 0;

  void UsePort(std::uint32_t base) override { Word("use " + Hex(base)); }
  void DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) override {
    Word(Hex(port) + "=" + Hex(value));
  }
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t port) override {
    Word(Hex(port) + "?");
    return status;
  }
  std::string Take() { return std::exchange(words_, {}); }

 private:
  void Word(const std::string& word) { words_ += (words_.empty() ? "" : " ") + word; }

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
    const char* what;
    LineSpec sdaOut, sclOut;
    const char* writes;  // SDA high, SDA low, SCL high, SCL low
  };
  for (const Row& row : {Row{"data bit 7, control bit 0, direct",
                             {0, true, 0x80},
                             {0, true, 0x01},
                             "378=FF 378=7F 37A=1 37A=0"},
                         {"data bit 0 direct, control inverted",
                          {0, true, 0x01},
                          {0, false, 0x01},
                          "378=7F 378=7E 37A=0 37A=1"},
                         {"data bit 7 inverted, control bit 3; addresses play no part",
                          {0x278, false, 0x80},
                          {0x27A, true, 0x08},
                          "378=7F 378=FF 37A=8 37A=0"},
                         {"unfilled row", {}, {}, "378=7F 378=7F 37A=0 37A=0"}}) {
    boards.BoardTable[0].SdaOut = row.sdaOut;
    boards.BoardTable[0].SclOut = row.sclOut;
    port.SetSdaHigh();
    port.SetSdaLow();
    port.SetSclHigh();
    port.SetSclLow();
    EXPECT_EQ(io.Take(), row.writes) << row.what;
  }
}

TEST_F(IicPortTest, SamplesSdaWithTheMaskAndThePolarity) {
  struct Row {
    LineSpec sdaIn;
    std::optional<std::uint8_t> status;
    bool low;
  };
  for (const Row& row : {Row{{0, true, 0x40}, 0x40, true},
                         {{0, true, 0x40}, 0xBF, false},
                         {{0, false, 0x40}, 0x40, false},
                         {{0, false, 0x40}, 0xBF, true},
                         {{0, true, 0x80}, 0x80, true},
                         {{0, true, 0x40}, std::nullopt, false},
                         {{0, false, 0x40}, std::nullopt, false}}) {
    boards.BoardTable[0].SdaIn = row.sdaIn;
    io.status = row.status;
    EXPECT_EQ(port.SdaIsLow(), row.low) << row.sdaIn.mask << " " << int{row.status.value_or(0)};
    EXPECT_EQ(io.Take(), "379?");
  }
  EXPECT_TRUE(problems.empty());
}

TEST_F(IicPortTest, ABoardWithoutCompleteWiringIsToldOnceAndReadsHigh) {
  const std::filesystem::path table = "some/InitPort.csv";
  boards.LoadPortConfig(table, [] {});
  for (LineSpec IspBoard::*line : {&IspBoard::SdaOut, &IspBoard::SdaIn, &IspBoard::SclOut}) {
    for (const bool direct : {true, false}) {
      boards.CurrentBoard = 7;
      boards.BoardTable[7] = TraceBoard();
      boards.BoardTable[7].SdaIn.polarity = direct;
      (boards.BoardTable[7].*line).mask = 0;
      for (const int status : {0x00, 0xFF}) {
        io.status = static_cast<std::uint8_t>(status);
        EXPECT_FALSE(port.SdaIsLow());
      }
    }
  }
  ASSERT_EQ(problems.size(), 1U);
  for (const char* part : {"number 7", "some/InitPort.csv"}) {
    EXPECT_NE(problems[0].find(part), std::string::npos) << problems[0];
  }
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
  EXPECT_EQ(io.Take(), "378=7F 378=FF use EC00 EC01? EC02=0");

  port.PortBase = 0xEC02;  // its data register is the old control register
  port.SetSclLow();
  port.PortBase = 0;  // never used, never announced
  port.PortBase = 0xEC02;
  port.SetSdaHigh();
  EXPECT_EQ(io.Take(), "use EC02 EC04=0 EC02=FF");
  port.ReopenPort();
  port.SetSdaHigh();
  EXPECT_EQ(io.Take(), "use EC02 EC02=FF");
}

TEST_F(IicPortTest, LinesAreReleasedOnlyOnAPortInUse) {
  port.SetSdaLow();
  io.Take();
  port.ReleaseLines();
  EXPECT_EQ(io.Take(), "37A=1 378=7F") << "SCL before SDA: a STOP, not a START";
  port.PortBase = 0x200;
  port.ReleaseLines();
  EXPECT_EQ(io.Take(), "");
}

}  // namespace
