// Programming the two banks of a VSK630.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/images.h"
#include "support/vsk_bench.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using Lines = std::vector<std::string>;

struct Vsk630Test : testing::Test {
  std::unique_ptr<VskBench> bench = std::make_unique<VskBench>(simulator::ConnectedChip::Vsk630);
  Transcript& view = bench->view;
  simulator::VskChip& chip = bench->board.vsk630;

  void Program() {
    bench->EnterIspMode();
    bench->TakeFrames();
    view.Take();
    bench->isp.DoProgram(view);
  }
  Lines Percents() {
    Lines percents;
    for (const std::string& line : view.Take()) {
      if (line.starts_with("Label3 \"finish")) percents.push_back(line.substr(14));
    }
    return percents;
  }
};

TEST_F(Vsk630Test, BothBanksOverTheWire) {
  const auto bank0 = Image(0x101, 3);
  const auto bank1 = Image(2, 4);
  bench->Load(bank0, bank1);
  Program();
  const std::uint16_t crc = bench->images.CodeCrc;
  EXPECT_THAT(
      bench->TakeFrames(),
      ElementsAre("S 96 68 00 P", "S 94 00 00 P", "S 96 D0 P", "S 96 A0 00 P", DataFrame(bank0, 0),
                  "S 96 A0 01 P", DataFrame(bank0, 1), "S 96 A1 00 P", DataFrame(bank1, 0),
                  "S 97 [00] [00] [00] [" + fileop::HexByte(crc >> 8) + "] [" +
                      fileop::HexByte(crc & 0xFF) + "]- P",
                  "S 96 48 00- P", "S 96- P"));
  EXPECT_EQ(view.operationText, "Write Ok");
  EXPECT_TRUE(FlashEquals(chip.Bank(0), bank0) && FlashEquals(chip.Bank(1), bank1));
}

TEST_F(Vsk630Test, AFullPairAndItsProgress) {
  const auto bank0 = Image(0x10000, 5);
  const auto bank1 = Image(0x10000, 6);
  bench->Load(bank0, bank1);
  Program();
  EXPECT_EQ(view.operationText, "Write Ok");
  EXPECT_TRUE(FlashEquals(chip.Bank(0), bank0) && FlashEquals(chip.Bank(1), bank1));
  Lines expected;
  for (const int first : {0, 50}) {
    for (int percent = first; percent <= first + 50; percent += 5) {
      expected.push_back("  " + std::to_string(percent) + "%\"");
    }
  }
  EXPECT_EQ(Percents(), expected);
}

TEST_F(Vsk630Test, ProgressOfTheSmallestBanks) {
  bench->Load(Image(1), Image(1));
  Program();
  EXPECT_THAT(Percents(), ElementsAre("  50%\"", "\"", "  100%\"", "\""));
  bench->Load(Image(0), Image(300));
  Program();
  EXPECT_EQ(bench->TakeFrames()[4], "S 94 00 P") << "an empty bank 0";
  EXPECT_EQ(view.operationText, "Write Ok");
}

TEST(Vsk630Addresses, GoOutUnchanged) {
  // An odd address is sent as it is, which only a bank's own frames do.
  for (const auto& [program, command] : {std::pair{&IspOperations::ProgramBank0, "S 97"},
                                         {&IspOperations::ProgramBank1, "S 97"},
                                         {&IspOperations::ProgramImage, "S 96"}}) {
    const auto bench = std::make_unique<VskBench>();
    bench->EnterIspMode();
    bench->frames.IspParams[0] = 0x95;
    bench->TakeFrames();
    (bench->isp.*program)(0, bench->view);
    EXPECT_THAT(bench->TakeFrames().front(), testing::StartsWith(command));
  }
}

TEST_F(Vsk630Test, ARefusedPageInBank0EndsItSilentlyAndBank1StillRuns) {
  bench->Load(Image(600), Image(600));
  bench->EnterIspMode();
  bench->TakeFrames();
  view.Take();
  bench->board.faults.refusedByte = {bench->board.wire.FramesSeen() + 6, 2};
  bench->isp.DoProgram(view);
  const Lines frames = bench->TakeFrames();
  EXPECT_EQ(frames[5], "S 96 A0 01- P");
  EXPECT_EQ(frames[6], "S 96 A1 00 P");
  const Lines shown = view.Take();
  EXPECT_THAT(shown, Contains("Label3 \"programcode ok\""));
  EXPECT_THAT(shown, Not(Contains("Label3 \"programcode fail\"")));
  EXPECT_EQ(view.operationText, "CRC Error");
}

TEST_F(Vsk630Test, ARefusedPageInBank1Fails) {
  bench->Load(Image(10), Image(600));
  bench->EnterIspMode();
  bench->TakeFrames();
  bench->board.faults.refusedByte = {bench->board.wire.FramesSeen() + 8, 2};
  bench->isp.DoProgram(view);
  EXPECT_EQ(bench->TakeFrames()[7], "S 96 A1 01- P");
  EXPECT_THAT(view.Take(), Contains("Label3 \"programcode fail\""));
  EXPECT_EQ(view.operationText, "CRC Error");
}

/// An image loaded for one chip and programmed as the other: the bank buffers as they are.
TEST_F(Vsk630Test, AVsk830ImageProgrammedAsAVsk630) {
  bench->Load(Image(300));
  bench->isp.ChipSelect = VskChip::Vsk630;
  Program();
  EXPECT_THAT(Percents(), ElementsAre("  50%\"", "\"", "  100%\"", "\""));
  EXPECT_EQ(view.operationText, "CRC Error");
  EXPECT_EQ(chip.Bank(0).Cells()[0], 0x00);
}

}  // namespace
