// Whole runs on the simulated RTD2120: what the status box held, and the frames on the wire.
#include "rtd2120/rtd_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rtd2120/crc8.h"
#include "support/bench.h"
#include "support/images.h"
#include "support/rtd_transcript.h"
#include "support/temp_folder.h"

namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

int Crc8(const std::vector<std::uint8_t>& image) {
  std::uint8_t crc = 0;
  for (const std::uint8_t byte : image) crc = tongxun2120::Crc8Byte(crc, byte);
  return crc;
}

struct RtdWriterTest : testing::Test {
  std::unique_ptr<Bench> bench = std::make_unique<Bench>(Wiring(), simulator::VskIdentity{},
                                                         simulator::ConnectedChip::Rtd2120);
  RtdTranscript view;
  RtdWriter& writer = bench->tool.rtdWriter;
  simulator::Rtd2120Chip& chip = bench->board.rtd2120;
  tongxun::CodeBuffers& buffers = bench->tool.vskImages;

  void LoadBank(int bank, const std::vector<std::uint8_t>& image) {
    auto& cells = bank == 1 ? buffers.RtdBank1Buffer : buffers.RtdBank2Buffer;
    cells.fill(0xFF);
    std::copy(image.begin(), image.end(), cells.begin());
    (bank == 1 ? buffers.Bank1Max : buffers.Bank2Max) = static_cast<std::int32_t>(image.size()) - 1;
    (bank == 1 ? buffers.Bank1Loaded : buffers.Bank2Loaded) = true;
  }
  std::string Run(RtdBankMode banks, RtdOperateMode operate = RtdOperateMode::Automatic) {
    writer.BankMode = banks;
    writer.OperateMode = operate;
    view.events.clear();
    bench->TakeFrames();
    writer.Run(view);
    return view.text;
  }
  static std::string CrcLines(int calculated, int read) {
    return "Calculate CRC   0x" + HexText(calculated) + "\r\nRead CRC         0x" + HexText(read) +
           "\r\n";
  }
  static std::string BankLines(const char* bank, const std::vector<std::uint8_t>& image) {
    return std::string("Program BANK ") + bank + "   100 %\r\n" +
           CrcLines(Crc8(image), Crc8(image)) + "CRC OK.\r\n";
  }
};

TEST_F(RtdWriterTest, BothBanks) {
  const auto bank1 = Image(700, 3);
  const auto bank2 = Image(300, 4);
  LoadBank(1, bank1);
  LoadBank(2, bank2);
  EXPECT_EQ(Run(RtdBankMode::Both),
            "Erase MCU OK.\r\n" + BankLines("1", bank1) + BankLines("2", bank2));
  EXPECT_FALSE(view.red);
  EXPECT_TRUE(FlashEquals(chip.Bank(0), bank1) && FlashEquals(chip.Bank(1), bank2));
  EXPECT_FALSE(chip.InIspMode());
  EXPECT_THAT(view.events, ElementsAre("Erase MCU OK.\r\n", "Program BANK 1   1 %",
                                       "Program BANK 1   34 %", "Program BANK 1   68 %",
                                       "Program BANK 1   100 %\r\n", StartsWith("Calculate"),
                                       StartsWith("Read"), "CRC OK.\r\n", "Program BANK 2   1 %",
                                       "Program BANK 2   51 %", "Program BANK 2   100 %\r\n",
                                       StartsWith("Calculate"), StartsWith("Read"), "CRC OK.\r\n"));
}

TEST_F(RtdWriterTest, TheFramesOfOneBank) {
  std::vector<std::uint8_t> image(0x101, 0x12);
  LoadBank(2, image);
  Run(RtdBankMode::Second);
  image.resize(0x200, 0xFF);
  const auto page = [&](std::size_t number) {
    std::string frame = "S 94 94";
    for (std::size_t i = 0; i < 256; ++i) {
      frame += " " + fileop::HexByte(image[256 * number + i]);
    }
    return frame + " P";
  };
  const std::string crc = fileop::HexByte(Crc8(std::vector<std::uint8_t>(0x101, 0x12)));
  const std::string busy = "S 94 90 Sr 95 [70]- P";
  const std::string idle = "S 94 90 Sr 95 [60]- P";
  EXPECT_THAT(bench->TakeFrames(),
              ElementsAre("S 94 90 40 P", "S 94 36 00 P", "S 94 90 Sr 95 [40]- P", "S 94 90 60 P",
                          "S 96 92 00 00 P", page(0), busy, busy, idle, "S 96 92 01 00 P", page(1),
                          busy, busy, idle, "S 94 90 60 P", "S 96 92 00 00 P", "S 96 A0 01 00 P",
                          "S 94 90 Sr 95 [68]- P", idle, "S 94 A2 80 P", "S 94 A2 Sr 95 [80]- P",
                          "S 94 A2 Sr 95 [80]- P", "S 94 A2 Sr 95 [40]- P",
                          "S 94 A3 Sr 95 [" + crc + "]- P", "S 94 90 00 P"));
  EXPECT_EQ(view.events.front(), "Program BANK 2   1 %") << "no erase of its own";
}

TEST_F(RtdWriterTest, EraseOnlyStaysInIspMode) {
  EXPECT_EQ(Run(RtdBankMode::Both, RtdOperateMode::EraseOnly), "Erase MCU OK.\r\n");
  EXPECT_THAT(bench->TakeFrames(), Not(Contains("S 94 90 00 P")));
  EXPECT_TRUE(chip.InIspMode());
  EXPECT_EQ(Run(RtdBankMode::First, RtdOperateMode::EraseOnly), "Erase MCU OK.\r\n")
      << "each run begins with an empty text";
}

TEST_F(RtdWriterTest, BanksThatAreNotLoaded) {
  EXPECT_EQ(Run(RtdBankMode::Both), "");
  EXPECT_THAT(view.events, ElementsAre("message Please load code in Buffer 1",
                                       "message Please load code in Buffer 2"));
  EXPECT_EQ(bench->TakeFrames().back(), "S 94 90 00 P");
  const auto image = Image(10);
  LoadBank(2, image);
  EXPECT_EQ(Run(RtdBankMode::Both), BankLines("2", image));
}

TEST_F(RtdWriterTest, MaximaAndTheirFigures) {
  struct Case {
    std::int32_t maximum;
    int pages;
    const char* end;
    int lastFigure;
  };
  for (const Case& c : {Case{0, 1, "S 96 A0 00 00 P", 1},
                        {0xFF, 1, "S 96 A0 00 FF P", 1},
                        {0x100, 2, "S 96 A0 01 00 P", 51},
                        {0x10C0, 17, "S 96 A0 10 C0 P", 95},
                        {0x7FFF, 128, "S 96 A0 7F FF P", 100},
                        {0xFFF0, 256, "S 96 A0 FF F0 P", 101},
                        {0xFFFF, 256, "S 96 A0 FF FF P", 101}}) {
    const auto image = Image(static_cast<std::size_t>(c.maximum) + 1, 9);
    LoadBank(1, image);
    EXPECT_EQ(Run(RtdBankMode::First), "Erase MCU OK.\r\n" + BankLines("1", image)) << c.maximum;
    EXPECT_TRUE(FlashEquals(chip.Bank(0), image)) << c.maximum;
    const auto frames = bench->TakeFrames();
    EXPECT_EQ(std::count_if(frames.begin(), frames.end(),
                            [](const std::string& f) { return f.starts_with("S 94 94 "); }),
              c.pages);
    EXPECT_THAT(frames, Contains(c.end));
    EXPECT_EQ(view.events[static_cast<std::size_t>(c.pages)],
              "Program BANK 1   " + std::to_string(c.lastFigure) + " %");
  }
}

TEST_F(RtdWriterTest, AnAddressOutsideTheBankTouchesNoFlash) {
  for (const std::int32_t maximum : {-1, 0x10000}) {
    LoadBank(1, Image(4));
    buffers.Bank1Max = maximum;
    EXPECT_EQ(Run(RtdBankMode::First), "Image address error.\r\n");
    EXPECT_TRUE(view.red);
    EXPECT_EQ(bench->TakeFrames().size(), 4U) << "entry and leaving only";
  }
}

TEST_F(RtdWriterTest, EntryRefused) {
  bench->board.Connect(simulator::ConnectedChip::None);
  bench->tool.rtdLink.RtdRxBuf[0] = 0x40;  // an old reading proves nothing
  LoadBank(1, Image(4));
  EXPECT_EQ(Run(RtdBankMode::First), "MCU link error");
  EXPECT_TRUE(view.red);
  EXPECT_EQ(bench->TakeFrames().size(), 3U);
}

TEST_F(RtdWriterTest, CrcMismatchIsRed) {
  const auto image = Image(300);
  LoadBank(1, image);
  bench->board.faults.flippedBit = {0, 7, 3};
  const std::string text = Run(RtdBankMode::First);
  EXPECT_TRUE(text.ends_with("CRC FAIL.\r\n")) << text;
  EXPECT_TRUE(view.red);
  EXPECT_EQ(view.events.back(), "red CRC FAIL.\r\n");
  bench->board.faults.flippedBit.reset();
  EXPECT_TRUE(Run(RtdBankMode::First).ends_with("CRC OK.\r\n"));
  EXPECT_FALSE(view.red) << "cleared at the start of the run";
}

TEST_F(RtdWriterTest, TheSecondBankIsWrittenAfterAFailureOfTheFirst) {
  const auto bank2 = Image(300, 4);
  LoadBank(1, Image(0x800));
  LoadBank(2, bank2);
  buffers.RtdBank2Buffer[65540] = 0x77;
  bench->board.faults.flippedBit = {0, 7, 3};
  const std::string text = Run(RtdBankMode::Both);
  EXPECT_THAT(text, testing::HasSubstr("CRC FAIL.\r\nProgram BANK 2 "));
  EXPECT_TRUE(text.ends_with(BankLines("2", bank2)));
  EXPECT_EQ(view.events[2], "Program BANK 1   13 %") << "12.5 rounds to the even 12, plus 1";
  EXPECT_EQ(buffers.RtdLoadBuffer[65540], 0x77) << "all cells are copied";
}

TEST_F(RtdWriterTest, APageThatNeverFinishesIsReadExactly5003Times) {
  LoadBank(1, Image(600));
  ASSERT_TRUE(bench->tool.rtdLink.RtdEnterIsp());
  buffers.RtdLoadBuffer = buffers.RtdBank1Buffer;
  bench->tool.rtdOperations.RtdBuildPages(599);
  bench->tool.rtdOperations.RtdMaxAddr = 599;
  bench->board.faults.busyForEver = true;
  bench->TakeFrames();
  bench->tool.rtdOperations.RtdProgramBank(tongxun2120::Bank::First, view);
  EXPECT_EQ(view.text, "Program BANK 1   1 %MCU link error");
  EXPECT_TRUE(view.red);
  const auto frames = bench->TakeFrames();
  EXPECT_EQ(frames.size(), 3U + 5003U);
  EXPECT_EQ(frames[3], "S 94 90 Sr 95 [50]- P");
}

TEST_F(RtdWriterTest, AnEraseThatNeverEndsIsGivenUpAndNothingIsProgrammed) {
  LoadBank(1, Image(4));
  LoadBank(2, Image(4));
  bench->board.faults.busyForEver = true;
  EXPECT_EQ(Run(RtdBankMode::Both), "MCU link error");
  EXPECT_TRUE(view.red);
  const auto frames = bench->TakeFrames();
  EXPECT_THAT(frames, Each(Not(StartsWith("S 94 94 "))));
  EXPECT_EQ(frames.back(), "S 94 90 00- P")
      << "the busy chip takes nothing, but ISP mode is left all the same";
}

/// Unplugged after each frame in turn: bounded, red, and never "CRC OK." for what was not written.
TEST_F(RtdWriterTest, UnpluggedInEveryPhase) {
  const auto image = Image(400);
  int ends[3] = {0, 0, 0};
  for (std::uint64_t frames = 0; frames <= 48; ++frames) {
    chip.OnUnplugged();
    bench->board.faults.unpluggedAfterFrame = simulator::Faults::kNever;
    LoadBank(1, image);
    bench->board.faults.unpluggedAfterFrame = bench->board.wire.FramesSeen() + frames;
    if (frames == 0) bench->board.faults.unpluggedAfterFrame = 0;
    const std::string text = Run(RtdBankMode::First);
    const bool ok = text.ends_with("CRC OK.\r\n");
    EXPECT_TRUE(!ok || FlashEquals(chip.Bank(0), image)) << frames;
    EXPECT_EQ(view.red, !ok) << frames;
    EXPECT_TRUE(ok || text.ends_with("MCU link error") || text.ends_with("CRC FAIL.\r\n")) << text;
    ++ends[ok ? 0 : text.ends_with("MCU link error") ? 1 : 2];
  }
  EXPECT_GT(ends[0], 0) << "unplugged after the run";
  EXPECT_GT(ends[1], 25) << "unplugged before";
}

TEST_F(RtdWriterTest, APageByteTakes28PortAccesses) {
  auto& link = bench->tool.rtdLink;
  const auto accesses = [&](int count) {
    const std::uint64_t before = bench->board.cable.Accesses();
    link.RtdWritePage(count, 3);
    return bench->board.cable.Accesses() - before;
  };
  const std::uint64_t frame = accesses(0);
  EXPECT_EQ(frame, 9U) << "two idle levels, START, and a STOP that samples SDA";
  EXPECT_EQ(accesses(1), frame + 28U);
  EXPECT_EQ(accesses(258), frame + 258U * 28U);
}

TEST_F(RtdWriterTest, Crc8Values) {
  const std::string digits = "123456789";
  EXPECT_EQ(Crc8({digits.begin(), digits.end()}), 0xF4);
  EXPECT_EQ(Crc8(std::vector<std::uint8_t>(256, 0xFF)), 0x24);
}

TEST_F(RtdWriterTest, LoadsTheBankBuffers) {
  TempFolder folder;
  view.file = folder.Write("a.bin", std::string(0x8000, '\1'));
  buffers.RtdLoadBuffer.fill(0x55);
  Load_RTD2120_NormalFile(0, buffers, view);
  EXPECT_THAT(view.events, ElementsAre("choose Hexfile (*.hex)|*.hex|Binfile (*.bin)|*.bin",
                                       "row 1 32767 " + HexText((0x8000 + 0x8000 * 0xFF) & 0xFFFF) +
                                           " " + view.file));
  EXPECT_TRUE(buffers.Bank1Loaded);
  EXPECT_FALSE(buffers.Bank2Loaded);
  EXPECT_EQ(buffers.RtdBank1Buffer[0x8000], 0xFF);
  EXPECT_EQ(buffers.RtdBank1Buffer[0xFFFF], 0xFF);
  EXPECT_EQ(buffers.RtdBank1Buffer[0x10000], 0x55) << "all cells are copied, the tail too";

  view.events.clear();
  view.file = folder.Write("b.hex", ":0100000007F8\n");
  Load_RTD2120_NormalFile(1, buffers, view);
  EXPECT_FALSE(buffers.Bank2Loaded);
  view.file = folder.Write("b.hex", ":0100000007F8\r\n");
  Load_RTD2120_NormalFile(7, buffers, view);
  EXPECT_TRUE(buffers.Bank2Loaded);
  EXPECT_EQ(buffers.Bank2Max, 0);
  EXPECT_EQ(buffers.RtdBank2Buffer[1], 0xFF);
  EXPECT_EQ(buffers.RtdBank1Buffer[0], 1);
  view.events.clear();
  view.file.clear();
  Load_RTD2120_NormalFile(1, buffers, view);
  EXPECT_EQ(view.events.size(), 1U) << "cancelled: nothing changes";
}

}  // namespace
