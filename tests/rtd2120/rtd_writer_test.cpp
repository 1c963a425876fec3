// Whole runs on the simulated RTD2120: what the status box held, and the frames on the wire.
#include "rtd2120/rtd_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "support/images.h"
#include "support/rtd_bench.h"
#include "support/temp_folder.h"

namespace {

using namespace tongxun2120;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

struct RtdWriterTest : testing::Test {
  std::unique_ptr<RtdBench> bench = std::make_unique<RtdBench>();
  RtdTranscript& view = bench->view;
  RtdWriter& writer = bench->writer;
  simulator::Rtd2120Chip& chip = bench->board.rtd2120;
  RtdImages& images = bench->images;
  std::vector<std::string> events;  // of the last run

  std::string Run(RtdBankMode banks, RtdOperateMode operate = RtdOperateMode::Automatic) {
    writer.BankMode = banks;
    writer.OperateMode = operate;
    view.Take();
    bench->TakeFrames();
    writer.Run(view);
    events = view.Take();
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
  bench->Load(Bank::First, bank1);
  bench->Load(Bank::Second, bank2);
  images.Of(Bank::First).file = "one.hex";
  images.Of(Bank::Second).file = "two.hex";
  RunLine told;
  writer.RunEnded = [&](const RunLine& line) { told = line; };
  EXPECT_EQ(Run(RtdBankMode::Both),
            "Erase MCU OK.\r\n" + BankLines("1", bank1) + BankLines("2", bank2));
  const std::string crcs = HexText(Crc8(bank1)) + " + " + HexText(Crc8(bank2));
  EXPECT_THAT(told.result, StartsWith("Erase MCU OK.; Program BANK 1   100 %; Calculate CRC"));
  told.result.clear();
  EXPECT_EQ(told, (RunLine{.chip = "RTD2120",
                           .operation = "Auto",
                           .file = "one.hex + two.hex",
                           .size = 1000,
                           .crc = crcs,
                           .chipCrc = crcs}));
  EXPECT_FALSE(view.red);
  EXPECT_TRUE(FlashEquals(chip.Bank(0), bank1) && FlashEquals(chip.Bank(1), bank2));
  EXPECT_FALSE(chip.InIspMode());
  EXPECT_THAT(events, ElementsAre("Erase MCU OK.\r\n", "Program BANK 1   1 %",
                                  "Program BANK 1   34 %", "Program BANK 1   68 %",
                                  "Program BANK 1   100 %\r\n", StartsWith("Calculate"),
                                  StartsWith("Read"), "CRC OK.\r\n", "Program BANK 2   1 %",
                                  "Program BANK 2   51 %", "Program BANK 2   100 %\r\n",
                                  StartsWith("Calculate"), StartsWith("Read"), "CRC OK.\r\n"));
}

TEST_F(RtdWriterTest, TheFramesOfOneBank) {
  std::vector<std::uint8_t> image(0x101, 0x12);
  bench->Load(Bank::Second, image);
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
  EXPECT_EQ(events.front(), "Program BANK 2   1 %") << "no erase of its own";
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
  EXPECT_THAT(events, ElementsAre("message Please load code in Buffer 1",
                                  "message Please load code in Buffer 2"));
  EXPECT_EQ(bench->TakeFrames().back(), "S 94 90 00 P");
  const auto image = Image(10);
  bench->Load(Bank::Second, image);
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
    bench->Load(Bank::First, image);
    EXPECT_EQ(Run(RtdBankMode::First), "Erase MCU OK.\r\n" + BankLines("1", image)) << c.maximum;
    EXPECT_TRUE(FlashEquals(chip.Bank(0), image)) << c.maximum;
    const auto frames = bench->TakeFrames();
    EXPECT_EQ(std::count_if(frames.begin(), frames.end(),
                            [](const std::string& f) { return f.starts_with("S 94 94 "); }),
              c.pages);
    EXPECT_THAT(frames, Contains(c.end));
    EXPECT_EQ(events[static_cast<std::size_t>(c.pages)],
              "Program BANK 1   " + std::to_string(c.lastFigure) + " %");
  }
}

TEST_F(RtdWriterTest, TheSecondBankIsWrittenAfterAFailureOfTheFirst) {
  const auto bank2 = Image(300, 4);
  bench->Load(Bank::First, Image(0x800));
  bench->Load(Bank::Second, bank2);
  images.RtdBank2Buffer[65540] = 0x77;
  bench->board.faults.flippedBit = {0, 7, 3};
  const std::string text = Run(RtdBankMode::Both);
  EXPECT_THAT(text, testing::HasSubstr("CRC FAIL.\r\nProgram BANK 2 "));
  EXPECT_TRUE(text.ends_with(BankLines("2", bank2)));
  EXPECT_EQ(events[2], "Program BANK 1   13 %") << "12.5 rounds to the even 12, plus 1";
  EXPECT_EQ(images.RtdLoadBuffer[65540], 0x77) << "all cells are copied";
  EXPECT_TRUE(view.red);
  bench->board.faults.flippedBit.reset();
  Run(RtdBankMode::Second);
  EXPECT_FALSE(view.red) << "each run begins in black";
}

TEST_F(RtdWriterTest, APageThatNeverFinishesIsReadExactly5003Times) {
  bench->Load(Bank::First, Image(600));
  ASSERT_TRUE(bench->link.RtdEnterIsp());
  images.RtdLoadBuffer = images.RtdBank1Buffer;
  bench->operations.RtdBuildPages(599);
  bench->operations.RtdMaxAddr = 599;
  bench->board.faults.busyForEver = true;
  bench->TakeFrames();
  bench->operations.RtdProgramBank(Bank::First, view);
  EXPECT_EQ(view.text, "Program BANK 1   1 %MCU link error");
  EXPECT_TRUE(view.red);
  const auto frames = bench->TakeFrames();
  EXPECT_EQ(frames.size(), 3U + 5003U);
  EXPECT_EQ(frames[3], "S 94 90 Sr 95 [50]- P");
}

/// ISP mode is left all the same, and neither a bank's CRC nor the second bank follows a wait that
/// expired.
TEST_F(RtdWriterTest, RunsThatEndEarly) {
  struct Case {
    const char* what;
    std::function<void(RtdBench&)> prepare;
    std::string text;
    std::size_t frames;
    const char* last;
  };
  const auto image = Image(4);
  const auto maximum = [](std::int32_t m) { return [m](RtdBench& b) { b.images.Bank1Max = m; }; };
  const std::string written = "Erase MCU OK.\r\nProgram BANK 1   100 %\r\nCalculate CRC   0x" +
                              HexText(Crc8(image)) + "\r\nMCU link error\r\n";
  const Case cases[] = {
      {"no image", maximum(-1), "Image address error.\r\n", 4, "S 94 90 00 P"},
      {"beyond the bank", maximum(0x10000), "Image address error.\r\n", 4, "S 94 90 00 P"},
      {"no chip; an old reading proves nothing",
       [](RtdBench& b) {
         b.board.Connect(simulator::ConnectedChip::None);
         b.link.RtdRxBuf[0] = 0x40;
       },
       "MCU link error", 3, "S 94-"},
      {"an erase without end: the busy chip does not take the last write",
       [](RtdBench& b) { b.board.faults.busyForEver = true; }, "MCU link error\r\n", 0,
       "S 94 90 00- P"},
      {"unplugged behind the wait for the page",
       [](RtdBench& b) { b.board.faults.unpluggedAfterFrame = 22; }, written, 0, " 94- 90- 00- P"},
  };
  for (const Case& c : cases) {
    RtdBench& run = *(bench = std::make_unique<RtdBench>());
    run.Load(Bank::First, image);
    run.Load(Bank::Second, image);
    c.prepare(run);
    run.writer.BankMode = c.frames > 0 ? RtdBankMode::First : RtdBankMode::Both;
    run.writer.Run(run.view);
    EXPECT_EQ(run.view.text, c.text) << c.what;
    EXPECT_TRUE(run.view.red) << c.what;
    const auto frames = run.TakeFrames();
    EXPECT_EQ(c.frames > 0 ? frames.size() : 0, c.frames) << c.what;
    EXPECT_THAT(frames.back(), testing::EndsWith(c.last)) << c.what;
  }
}

TEST_F(RtdWriterTest, Crc8Values) {
  const std::string digits = "123456789";
  EXPECT_EQ(Crc8(std::vector<std::uint8_t>(digits.begin(), digits.end())), 0xF4);
  EXPECT_EQ(Crc8(std::vector<std::uint8_t>(256, 0xFF)), 0x24);
}

TEST_F(RtdWriterTest, LoadsTheBankBuffers) {
  TempFolder folder;
  view.file = folder.Write("a.bin", std::string(0x8000, '\2'));
  images.RtdLoadBuffer.fill(0x55);
  writer.Load(Bank::First, view);
  EXPECT_THAT(view.Take(),
              ElementsAre("choose Hexfile (*.hex)|*.hex|Binfile (*.bin)|*.bin", "clear",
                          "row 1 32767 " + HexText((0x8000 * 2 + 0x8000 * 0xFF) & 0xFFFF) + " " +
                              view.file));
  EXPECT_TRUE(images.Bank1Loaded);
  EXPECT_FALSE(images.Bank2Loaded);
  EXPECT_EQ(images.RtdBank1Buffer[0x8000], 0xFF);
  EXPECT_EQ(images.RtdBank1Buffer[0xFFFF], 0xFF);
  EXPECT_EQ(images.RtdBank1Buffer[0x10000], 0x55) << "all cells are copied, the tail too";

  for (const char* refused : {"b.hex", "none.bin"}) {
    folder.Write("b.hex", ":0100000007F8\n");
    view.file = (folder / refused).string();
    writer.Load(Bank::Second, view);
    EXPECT_FALSE(images.Bank2Loaded) << refused;
  }
  view.file = folder.Write("b.hex", ":06FFFF00010203040506FF\r\n");
  writer.Load(Bank::Second, view);
  EXPECT_EQ(images.Bank2Max, 65540) << "the last cell";
  view.file = folder.Write("b.hex", ":0100000007F8\r\n");
  writer.Load(Bank::Second, view);
  EXPECT_TRUE(images.Bank2Loaded);
  EXPECT_EQ(images.Bank2Max, 0);
  EXPECT_EQ(images.RtdBank2Buffer[1], 0xFF);
  EXPECT_EQ(images.RtdBank1Buffer[0], 2);
  view.Take();
  view.file.clear();
  writer.Load(Bank::Second, view);
  EXPECT_EQ(view.Take().size(), 1U) << "cancelled: nothing changes";

  images.RtdBank1Buffer.fill(0xFF);
  images.SumRtdBank(Bank::First);
  EXPECT_EQ(images.RtdBankSum, 0x0000) << "65,536 cells, not one more";
}

}  // namespace
