// Whole runs on the simulated RTD2120: what the status box held, and the frames on the wire.
#include "rtd2120/rtd_writer.h"

#include <gmock/gmock.h>

#include <functional>

#include "support/images.h"
#include "support/rtd_rig.h"
#include "support/temp_folder.h"

namespace {

using namespace std::chrono_literals;
using namespace tongxun2120;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;

struct RtdWriterTest : testing::Test, RtdRig {
  simulator::Rtd2120Chip& chip = board.rtd2120;
  std::vector<std::string> events;  // of the last run

  std::string Run(RtdBankMode banks, RtdOperateMode operate = RtdOperateMode::Automatic) {
    writer.BankMode = banks;
    writer.OperateMode = operate;
    view.Take();
    TakeFrames();
    writer.Run(view);
    events = view.Take();
    return view.text;
  }
  static std::string BankLines(const std::string& bank, const std::vector<std::uint8_t>& image) {
    const std::string crc = HexText(Crc8(image)) + "\r\n";
    return "Program BANK " + bank + "   100 %\r\nCalculate CRC   0x" + crc + "Read CRC         0x" +
           crc + "CRC OK.\r\n";
  }
};

TEST_F(RtdWriterTest, BothBanks) {
  const auto bank1 = Image(700, 3);
  const auto bank2 = Image(300, 4);
  Load(Bank::First, bank1);
  Load(Bank::Second, bank2);
  images.Of(Bank::First).file.name = "one.hex";
  images.Of(Bank::Second).file.name = "two.hex";
  RunLine told;
  report.Ended = [&](const RunLine& line) { told = line; };
  ticks.fineStep = 99'600us;
  ticks.FineTime();  // the clock went on before the run
  EXPECT_EQ(Run(RtdBankMode::Both),
            "Erase MCU OK.\r\n" + BankLines("1", bank1) + BankLines("2", bank2));
  EXPECT_THAT(told.result.text, StartsWith("Erase MCU OK.; Program BANK 1   100 %; Calculate CRC"));
  told.result.text.clear();
  const auto written = [](const char* file, int bank, const std::vector<std::uint8_t>& image) {
    return RunImage{file, image.size(), bank, Crc8(image), Crc8(image)};
  };
  EXPECT_EQ(told, (RunLine{"RTD2120",
                           "Auto",
                           {written("one.hex", 0, bank1), written("two.hex", 1, bank2)},
                           {},
                           100ms}));
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
  auto image = Image(0x101);
  Load(Bank::Second, image);
  Run(RtdBankMode::Second);
  const std::string crc = fileop::HexByte(Crc8(image));
  image.resize(0x200, 0xFF);
  const auto page = [&](std::size_t number) {  // as a page of the other chips, of register 94
    return DataFrame(image, number).replace(5, 2, "94");
  };
  const std::string busy = "S 94 90 Sr 95 [70]- P";
  const std::string idle = "S 94 90 Sr 95 [60]- P";
  EXPECT_THAT(TakeFrames(),
              ElementsAre("S 94 90 40 P", "S 94 36 00 P", "S 94 90 Sr 95 [40]- P", "S 94 90 60 P",
                          "S 96 92 00 00 P", page(0), busy, busy, idle, "S 96 92 01 00 P", page(1),
                          busy, busy, idle, "S 94 90 60 P", "S 96 92 00 00 P", "S 96 A0 01 00 P",
                          "S 94 90 Sr 95 [68]- P", idle, "S 94 A2 80 P", "S 94 A2 Sr 95 [80]- P",
                          "S 94 A2 Sr 95 [80]- P", "S 94 A2 Sr 95 [40]- P",
                          "S 94 A3 Sr 95 [" + crc + "]- P", "S 94 90 00 P"));
  EXPECT_EQ(events.front(), "Program BANK 2   1 %") << "no erase of its own";
}

TEST_F(RtdWriterTest, AutoAsksWhenAFileThatWouldBeWrittenHasChanged) {
  TempFolder folder;
  std::string told;
  report.Ended = [&](const RunLine& line) { told += line.operation + " "; };
  for (const Bank bank : {Bank::First, Bank::Second}) {
    const std::string file = folder.Write(bank == Bank::First ? "1.bin" : "2.bin", "abc");
    EXPECT_TRUE(writer.Load(file, bank, view).Ok());
  }
  folder.Write("2.bin", "abd");
  view.confirmed = false;
  view.text = "CRC OK.\r\n";
  EXPECT_EQ(Run(RtdBankMode::Both), "") << "nothing of the run before";
  EXPECT_THAT(events, ElementsAre("confirm " + (folder / "2.bin").string() +
                                  " has changed since it was loaded. Program what was loaded?"));
  EXPECT_THAT(TakeFrames(), testing::IsEmpty());
  EXPECT_EQ(told, "");
  EXPECT_NE(Run(RtdBankMode::First), "") << "of the other bank";
  EXPECT_EQ(Run(RtdBankMode::Both, RtdOperateMode::EraseOnly), "Erase MCU OK.\r\n");
  EXPECT_THAT(TakeFrames(), Not(Contains("S 94 90 00 P")));
  EXPECT_TRUE(chip.InIspMode()) << "only erased";
  images.Bank2Max = -1;
  EXPECT_EQ(Run(RtdBankMode::Second), "Image address error.\r\n") << "not written";
  images.Bank2Max = 2;
  view.confirmed = true;
  view.whileAsked = [&] {
    writer.BankMode = RtdBankMode::First;
    writer.OperateMode = RtdOperateMode::EraseOnly;
  };
  EXPECT_EQ(Run(RtdBankMode::Second), BankLines("2", {'a', 'b', 'c'})) << "as when it began";
  images.Bank2Loaded = false;
  EXPECT_EQ(Run(RtdBankMode::Second), "");
  EXPECT_EQ(told, "Auto Erase Auto ") << "not where nothing was sent";
}

TEST_F(RtdWriterTest, BanksThatAreNotLoaded) {
  EXPECT_EQ(Run(RtdBankMode::Both), "");
  EXPECT_THAT(events, ElementsAre("message Please load code in Buffer 1",
                                  "message Please load code in Buffer 2"));
  EXPECT_EQ(TakeFrames().back(), "S 94 90 00 P");
  const auto image = Image(10);
  Load(Bank::Second, image);
  EXPECT_EQ(Run(RtdBankMode::Both), BankLines("2", image));
}

TEST_F(RtdWriterTest, MaximaAndTheirFigures) {
  for (const auto& [size, pages, lastFigure, end] : {std::tuple{0x1U, 1U, "1", "S 96 A0 00 00 P"},
                                                     {0x100U, 1U, "1", "S 96 A0 00 FF P"},
                                                     {0x10C1U, 17U, "95", "S 96 A0 10 C0 P"},
                                                     {0x10000U, 256U, "101", "S 96 A0 FF FF P"}}) {
    const auto image = Image(size, 9);
    Load(Bank::First, image);
    EXPECT_EQ(Run(RtdBankMode::First), "Erase MCU OK.\r\n" + BankLines("1", image)) << size;
    EXPECT_TRUE(FlashEquals(chip.Bank(0), image)) << size;
    const auto frames = TakeFrames();
    EXPECT_THAT(frames, Contains(StartsWith("S 94 94 ")).Times(pages));
    EXPECT_THAT(frames, Contains(end));
    EXPECT_EQ(events[pages], std::string("Program BANK 1   ") + lastFigure + " %");
  }
}

TEST_F(RtdWriterTest, TheSecondBankIsWrittenAfterAFailureOfTheFirst) {
  const auto bank2 = Image(300, 4);
  Load(Bank::First, Image(0x800));
  Load(Bank::Second, bank2);
  images.RtdBank2Buffer[65540] = 0x77;
  board.faults.flippedBit = {0, 7, 3};
  RunResult told;
  report.Ended = [&](const RunLine& line) { told = line.result; };
  const std::string text = Run(RtdBankMode::Both);
  EXPECT_EQ(told.failure, "CRC FAIL.");
  EXPECT_THAT(text, testing::HasSubstr("CRC FAIL.\r\nProgram BANK 2 "));
  EXPECT_TRUE(text.ends_with(BankLines("2", bank2)));
  EXPECT_EQ(events[2], "Program BANK 1   13 %") << "12.5 rounds to the even 12, plus 1";
  EXPECT_EQ(images.RtdLoadBuffer[65540], 0x77) << "all cells are copied";
  EXPECT_TRUE(view.red);
  EXPECT_EQ(view.spoken, "CRC FAIL.; CRC OK.");
  board.faults.flippedBit.reset();
  Run(RtdBankMode::Second);
  EXPECT_FALSE(view.red) << "each run begins in black";
}

/// And once more before its CRC is asked for.
TEST_F(RtdWriterTest, APageThatNeverFinishesIsReadExactly5003Times) {
  Load(Bank::Second, Image(600));
  board.faults.busyForEver = true;
  Run(RtdBankMode::Second);
  EXPECT_THAT(events, Contains("red Program BANK 2   1 %MCU link error"));
  EXPECT_THAT(TakeFrames(), Contains("S 94 90 Sr 95 [70]- P").Times(5003 + 1));
}

/// ISP mode is left all the same, and neither a bank's CRC nor the second bank follows a wait that
/// expired. A busy chip does not take the last write.
TEST_F(RtdWriterTest, RunsThatEndEarly) {
  const auto image = Image(4);
  const std::string written = "Erase MCU OK.\r\nProgram BANK 1   100 %\r\nCalculate CRC   0x" +
                              HexText(Crc8(image)) + "\r\nMCU link error\r\n";
  struct Case {
    std::function<void()> prepare;
    std::string text;
    const char* lastFrame;
    const char* logged;  // what turned the result red; nothing when the chip was not changed
    RtdBankMode banks = RtdBankMode::First;
  };
  std::string logged;
  report.Ended = [&](const RunLine& line) { logged = line.result.failure; };
  for (const Case& c : {
           Case{[&] { images.Bank1Max = -1; }, "Image address error.\r\n", "S 94 90 00 P", ""},
           Case{[&] { images.Bank1Max = 0x10000; }, "Image address error.\r\n", "S 94 90 00 P", ""},
           Case{[&] { board.faults.unpluggedAfterFrame = 22 + board.wire.FramesSeen(); }, written,
                " 94- 90- 00- P", kLinkError, RtdBankMode::Both},
           Case{[&] { board.faults.busyForEver = true; }, "MCU link error\r\n", "S 94 90 00- P",
                kLinkError, RtdBankMode::Both},
           Case{[&] { board.Connect(simulator::ConnectedChip::None); }, "MCU link error", "S 94-",
                ""},
       }) {
    board.faults = {};
    Load(Bank::First, image);
    Load(Bank::Second, image);
    c.prepare();
    link.RtdRxBuf[0] = 0x40;  // an old reading proves nothing
    logged.clear();
    EXPECT_EQ(Run(c.banks), c.text);
    EXPECT_EQ(logged, c.logged) << c.text;
    EXPECT_TRUE(view.red) << c.text;
    const auto frames = TakeFrames();
    EXPECT_THAT(frames.back(), testing::EndsWith(c.lastFrame)) << c.text;
    EXPECT_THAT(frames, Not(Contains("S 94 90 60 P"))) << "the second bank";
  }
}

TEST_F(RtdWriterTest, LoadsTheBankBuffers) {
  TempFolder folder;
  const auto load = [&](Bank bank, const std::string& name, const std::string& bytes) {
    const auto facts = writer.Load(bytes.empty() ? name : folder.Write(name, bytes), bank, view);
    std::vector<std::string> said = view.Take();
    EXPECT_NE(facts.Ok(), std::ranges::count(said, "message path or file name error!!!") > 0);
    return said;
  };
  images.RtdLoadBuffer.fill(0x55);
  const std::string sum = HexText((0x8000 * 2 + 0x8000 * 0xFF) & 0xFFFF);
  EXPECT_THAT(load(Bank::First, "a.bin", std::string(0x8000, '\2')),
              ElementsAre("clear", "row 1 32767 " + sum + " " + (folder / "a.bin").string()));
  EXPECT_TRUE(images.Bank1Loaded);
  EXPECT_EQ(images.Of(Bank::First).file.name, folder / "a.bin");
  for (const auto& [address, value] :
       {std::pair{0x8000U, 0xFF}, {0xFFFFU, 0xFF}, {0x10000U, 0x55}}) {
    EXPECT_EQ(images.RtdBank1Buffer[address], value) << "all cells are copied, the tail too";
  }
  load(Bank::Second, "b.hex", ":0100000007F8\n");
  load(Bank::Second, "none.bin", "");
  EXPECT_FALSE(images.Bank2Loaded) << "refused, and missing";
  load(Bank::Second, "b.hex", ":06FFFF00010203040506FF\r\n");
  EXPECT_EQ(images.Bank2Max, 65540) << "the last cell";
  load(Bank::Second, "b.hex", ":0100000007F8\r\n");
  EXPECT_TRUE(images.Bank2Loaded);
  EXPECT_EQ(images.Bank2Max, 0);
  EXPECT_EQ(images.RtdBank2Buffer[1], 0xFF);
  EXPECT_EQ(images.RtdBank1Buffer[0], 2);
  EXPECT_EQ(load(Bank::Second, "", "").size(), 0U) << "cancelled: nothing changes";

  images.RtdBank1Buffer.fill(0xFF);
  images.SumRtdBank(Bank::First);
  EXPECT_EQ(images.RtdBankSum, 0x0000) << "65,536 cells, not one more";
}

}  // namespace
