// Whole operations on the simulated VSK830: the frames on the wire, and the transcript of what the
// window showed.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/images.h"
#include "support/vsk_bench.h"
#include "text/hex_text.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

struct IspOperationsTest : testing::Test {
  std::unique_ptr<VskBench> bench = std::make_unique<VskBench>();
  Transcript& view = bench->view;
  IspOperations& isp = bench->isp;
};

TEST_F(IspOperationsTest, EnterSendsTheCodesAndQuitIsNotAcknowledged) {
  bench->EnterIspMode();
  EXPECT_THAT(bench->TakeFrames(), ElementsAre("S 5A A5 P"));
  EXPECT_THAT(view.Take(), ElementsAre("Label2 \"\"", "Label3 \"\"", "Label2 black",
                                       "Label2 \"isp mode is exist\""));
  EXPECT_TRUE(bench->board.vsk830.InIspMode());

  bench->EnterIspMode();
  EXPECT_THAT(bench->TakeFrames(), IsEmpty());
  EXPECT_THAT(view.Take(), ElementsAre("Label2 \"\"", "Label3 \"\"", "Label2 black",
                                       "Label2 \"isp mode is already exist\""));

  EXPECT_FALSE(isp.QuitIspMode(view));
  EXPECT_THAT(bench->TakeFrames(), ElementsAre("S 96 48 00- P", "S 96- P"))
      << "selecting the quit option sends the frame once more";
  const Lines once{"Label2 black", "Label2 \"isp mode is out\"", "select Option5"};
  Lines twice = once;
  twice.insert(twice.end(), {"Label2 \"\"", "Label3 \"\""});
  twice.insert(twice.end(), once.begin(), once.end());
  EXPECT_THAT(view.Take(), ElementsAreArray(twice));
  EXPECT_FALSE(bench->board.vsk830.InIspMode());
}

TEST_F(IspOperationsTest, EntryByNumberOfCodes) {
  struct Case {
    std::vector<std::uint8_t> codes;
    const char* frame;
  };
  for (const Case& c : {Case{{0x5B}, "S 5A P"},
                        {{0x10, 0x20, 0x31}, "S 10 20 31 P"},
                        {{1, 2, 3, 4}, "S 00 02 03 04 P"}}) {
    const auto other =
        std::make_unique<VskBench>(simulator::ConnectedChip::Vsk830, Wiring(),
                                   simulator::VskIdentity{.address = 0x94, .codes = c.codes});
    other->EnterIspMode();
    EXPECT_THAT(other->TakeFrames(), ElementsAre(c.frame));
    EXPECT_TRUE(other->board.vsk830.InIspMode()) << c.frame;
  }
  bench->frames.IspParams.fill(0);
  bench->EnterIspMode();
  EXPECT_THAT(bench->TakeFrames(), ElementsAre("S P"));
  EXPECT_EQ(view.modeText, "isp mode is exist") << "no code: nothing could be refused";
  EXPECT_FALSE(bench->board.vsk830.InIspMode());

  const auto longest = std::make_unique<VskBench>(
      simulator::ConnectedChip::Vsk830, Wiring(),
      simulator::VskIdentity{.address = 0x94, .codes = {1, 2, 3, 4, 5, 6, 7, 8, 9}});
  longest->frames.IspParams[1] = 200;
  longest->EnterIspMode();
  EXPECT_THAT(longest->TakeFrames(), ElementsAre("S 00 02 03 04 05 06 07 08 09 P"))
      << "a count above 9 is clipped";
}

TEST_F(IspOperationsTest, EntryRefusedByAWrongCode) {
  bench->frames.IspParams[3] = 0xA4;
  view.Take();
  bench->EnterIspMode();
  EXPECT_THAT(bench->TakeFrames(), ElementsAre("S 5A A4- P"));
  EXPECT_THAT(view.Take(), ElementsAre("Label2 \"\"", "Label3 \"\"", "Label2 red",
                                       "Label2 \"isp mode is no exist\""));
  EXPECT_FALSE(isp.IspModeOn);
}

TEST_F(IspOperationsTest, AQuitThatTheChipAcknowledgesIsNotOut) {
  bench->InIspMode();
  bench->board.faults.sdaStuckLow = true;
  view.quitSelected = true;
  EXPECT_TRUE(isp.QuitIspMode(view));
  EXPECT_THAT(view.Take(),
              ElementsAre("Label2 red", "Label2 \"isp mode is not out\"", "deselect Option5"));
  EXPECT_TRUE(isp.IspModeOn);
}

TEST_F(IspOperationsTest, EraseAll) {
  isp.DoEraseAll(view);
  EXPECT_THAT(bench->TakeFrames(), IsEmpty());
  EXPECT_THAT(view.Take(), ElementsAre("Label2 \"\"", "Label3 \"\"", "Label2 red",
                                       "Label2 \"blankentire:isp mode is not exist\""));
  bench->InIspMode();
  bench->timing.BitDelayCount = 2;
  const std::int64_t before = bench->timing.Steps;
  isp.ChipErase();
  const std::int64_t erase = bench->timing.Steps - before;
  int count = 2;
  bench->frames.IspWriteFrame(0x94, count, true);
  EXPECT_EQ(erase - 2 * (bench->timing.Steps - before - erase), 101);
  bench->TakeFrames();

  isp.DoEraseAll(view);
  EXPECT_THAT(bench->TakeFrames(), ElementsAre("S 96 68 00 P", "S 94 00 00 P"));
  EXPECT_THAT(view.Take(), ElementsAre("Label2 \"\"", "Label3 \"\"", "Label2 black",
                                       "Label2 \"blankentire:isp mode is  exist\"", "Label3 black",
                                       "Label3 \"Blank ok\""));
  bench->board.faults.busyForEver = true;
  isp.DoEraseAll(view);
  EXPECT_THAT(view.Take(), testing::IsSupersetOf({"Label3 red", "Label3 \"Blank fail\""}));
}

TEST_F(IspOperationsTest, PageEraseAsksAndErases) {
  bench->InIspMode();
  view.answers = {"10", "01G0", "0100", "02ff"};
  isp.DoPageErase(view);
  EXPECT_THAT(bench->TakeFrames(),
              ElementsAre("S 96 30 02 P", "S 94- P", "S 96 30 03 P", "S 94- P", "S 96 30 04 P",
                          "S 94- P", "S 96 30 05 P", "S 94- P"));
  const std::string start = "ask please input start address:(0000-FFFF)|erase|0000";
  const std::string again = "message please input four word HEX number:(0000-FFFF)";
  EXPECT_THAT(view.Take(),
              ElementsAre("Label2 \"\"", "Label3 \"\"", "Label2 black",
                          "Label2 \"page erase:isp mode is  exist\"", start, again, start, again,
                          start, "ask please input end address:(0000-FFFF)|erase|FFFF",
                          "Label3 black", "Label3 \"page erase ok\""));
  view.answers = {"0100"};
  isp.DoPageErase(view);
  EXPECT_EQ(view.Take().back(), "ask please input end address:(0000-FFFF)|erase|FFFF");
  EXPECT_THAT(bench->TakeFrames(), IsEmpty()) << "cancelled";
}

TEST_F(IspOperationsTest, PageEraseRanges) {
  bench->InIspMode();
  const std::string question = "confirm only addresses 0000-7FFF can be page erased";
  const std::string nothing =
      "message only addresses 0000-7FFF can be page erased: nothing can be erased at 8000 or above";
  const std::string black = "Label3 black", ok = "Label3 \"page erase ok\"";
  struct Case {
    std::int32_t start, end;
    bool confirmed;
    std::size_t pages;
    Lines lines;
  };
  for (const Case& c : {Case{0x0400, 0x0100, true, 0, {black, ok}},
                        {0, 0, true, 256, {question, black, ok}},
                        {0, 0xFFFF, true, 256, {question, black, ok}},
                        {0, 0xFFFF, false, 0, {question}},
                        {0x7F80, 0x7FFF, true, 1, {black, ok}},
                        {0x7F80, 0x8000, true, 1, {question, black, ok}},
                        {0x7F80, 0x8000, false, 0, {question}},
                        {0x8000, 0xFFFF, true, 0, {nothing}},
                        {0x9000, 0x0100, true, 0, {nothing}}}) {
    view.confirmed = c.confirmed;
    EXPECT_FALSE(isp.ErasePageRange(c.start, c.end, view));
    EXPECT_EQ(bench->TakeFrames().size(), 2 * c.pages) << c.start << " " << c.end;
    EXPECT_EQ(view.Take(), c.lines) << c.start << " " << c.end;
  }
  bench->board.faults.sdaStuckLow = true;
  EXPECT_TRUE(isp.ErasePageRange(0, 1, view));
  EXPECT_THAT(view.Take(), ElementsAre("Label3 red", "Label3 \"page erase fail\""));
}

TEST_F(IspOperationsTest, ProgramsAndVerifiesOnEveryWiring) {
  const auto image = Image(0x180 + 1);
  for (int polarities = 0; polarities < 8; ++polarities) {
    const IspBoard wiring =
        Wiring((polarities & 1) != 0, (polarities & 2) != 0, (polarities & 4) != 0);
    const auto wired = std::make_unique<VskBench>(simulator::ConnectedChip::Vsk830, wiring);
    wired->Load(image);
    wired->EnterIspMode();
    wired->view.Take();
    wired->TakeFrames();
    wired->isp.DoProgram(wired->view);

    const std::string crc = HexText(wired->images.CodeCrc);
    const std::string crcHigh = fileop::HexByte(wired->images.CodeCrc >> 8);
    const std::string crcLow = fileop::HexByte(wired->images.CodeCrc & 0xFF);
    EXPECT_THAT(wired->TakeFrames(),
                ElementsAre("S 96 68 00 P", "S 94 00 00 P", "S 96 D0 P", "S 96 A0 00 P",
                            DataFrame(image, 0), "S 96 A0 01 P", DataFrame(image, 1),
                            "S 97 [00] [00] [00] [" + crcHigh + "] [" + crcLow + "]- P",
                            "S 96 48 00- P", "S 96- P"));
    EXPECT_TRUE(FlashEquals(wired->board.vsk830.Bank(0), image));
    EXPECT_EQ(wired->view.operationText, "Write Ok");
    EXPECT_EQ(wired->frames.HwCrc, 0);
    if (polarities != 0) continue;

    Lines expected{"Label2 \"\"",         "Label3 \"\"",
                   "Label2 black",        "Label2 \"program:isp mode is exist\"",
                   "Label2 repaint",      "Label3 black",
                   "Label3 \"Blank ok\"", "Label3 repaint"};
    for (int percent = 0; percent <= 100; percent += 10) {
      expected.push_back("Label3 \"finish  " + std::to_string(percent) + "%\"");
      expected.push_back("Label3 repaint");
    }
    for (const std::string& line :
         {std::string("Label3 \"finish\""), std::string("Label3 repaint"),
          std::string("Label3 black"), std::string("Label3 \"programcode ok\""),
          std::string("Label3 repaint"), "Text6 " + crc, std::string("Label2 black"),
          std::string("Label2 \"isp mode is out\""), std::string("select Option5"),
          std::string("Label2 \"\""), std::string("Label3 \"\""), std::string("Label2 black"),
          std::string("Label2 \"isp mode is out\""), std::string("select Option5"),
          std::string("Label3 \"Write Ok\"")}) {
      expected.push_back(line);
    }
    EXPECT_THAT(wired->view.Take(), ElementsAreArray(expected));
  }
}

TEST_F(IspOperationsTest, WaitsForTheChip) {
  bench->Load(Image(4));
  bench->InIspMode();
  const std::uint32_t before = bench->ticks.Elapsed();
  isp.DoProgram(view);
  const std::uint32_t pause = bench->ticks.Elapsed() - before;
  EXPECT_GE(pause, 1000U);
  EXPECT_LE(pause, 1030U);

  bench->InIspMode();
  auto& timing = bench->timing;
  timing.BitDelayCount = 2;
  const auto steps = [&](auto action) {
    const std::int64_t start = timing.Steps;
    action();
    return timing.Steps - start;
  };
  const std::int64_t onePage = steps([&] { isp.ErasePageRange(0, 1, view); });
  const std::int64_t frames = steps([&] {
    for (const int address : {0x96, 0x94}) {
      bench->board.faults.unpluggedAfterFrame = address == 0x94 ? 0 : simulator::Faults::kNever;
      bench->frames.IspTxBuf = {0x30, 0};
      int count = 2;
      bench->frames.IspWriteFrame(address, count, true);
    }
  });
  EXPECT_EQ(onePage - frames, 501);
}

TEST_F(IspOperationsTest, OnlyTheLastFollowUpDecidesAPageErase) {
  bench->InIspMode();
  // Behind an erase-all command without its follow-up, page 0's command is refused and its
  // follow-up, the awaited one, is acknowledged.
  bench->frames.Send(0x96, {0x68, 0x00});
  bench->board.faults.refusedByte = {bench->board.wire.FramesSeen() + 1, 0};
  EXPECT_FALSE(isp.ErasePageRange(0, 0xFF, view));
  EXPECT_THAT(bench->TakeFrames(),
              ElementsAre("S 96 68 00 P", "S 96- P", "S 94 00 00 P", "S 96 30 01 P", "S 94- P"));
  EXPECT_EQ(view.operationText, "page erase ok");
}

/// Which texts of "finish" appear for a maximum address, in order.
TEST_F(IspOperationsTest, ProgressTextsByMaximumAddress) {
  const Lines allTenths{"0%",  "10%", "20%", "30%", "40%", "50%",
                        "60%", "70%", "80%", "90%", "100%"};
  struct Case {
    std::size_t size;
    Lines percents;
    bool partlyFilled;
    std::string lastFrame;
  };
  const Case cases[] = {
      {0, {}, true, "S 94 00 P"},    {1, {"100%"}, true, ""},      {6, {"0%"}, true, ""},
      {0x100, allTenths, false, ""}, {0x180, allTenths, true, ""}, {0x10000, allTenths, false, ""},
  };
  for (const Case& c : cases) {
    bench->Load(Image(c.size, 7));
    bench->InIspMode();
    isp.DoProgram(view);
    Lines percents;
    bool finish = false;
    for (const std::string& line : view.Take()) {
      if (line == "Label3 \"finish\"") finish = true;
      if (line.starts_with("Label3 \"finish  "))
        percents.push_back(line.substr(16, line.size() - 17));
    }
    EXPECT_EQ(percents, c.percents) << c.size;
    EXPECT_EQ(finish, c.partlyFilled) << c.size;
    const Lines frames = bench->TakeFrames();
    EXPECT_EQ(frames.size(), 3 + 2 * std::max<std::size_t>(1, (c.size + 255) / 256) + 3) << c.size;
    EXPECT_THAT(frames[4], testing::StartsWith(c.lastFrame));
    EXPECT_EQ(view.operationText, "Write Ok") << c.size;
  }
}

TEST_F(IspOperationsTest, ProgrammingStopsAtARefusedCommandAndAboveTheLastPage) {
  const auto image = Image(600);
  bench->Load(image);
  bench->InIspMode();
  bench->board.faults.refusedByte = {bench->board.wire.FramesSeen() + 6, 2};
  isp.DoProgram(view);
  const Lines frames = bench->TakeFrames();
  EXPECT_EQ(frames[5], "S 96 A0 01- P");
  EXPECT_THAT(frames[6], testing::StartsWith("S 97 "));
  EXPECT_EQ(view.operationText, "CRC Error");
  EXPECT_EQ(view.operationColour, StatusColour::Red) << "left by \"programcode fail\"";
  EXPECT_THAT(view.Take(), testing::Contains("Label3 \"programcode fail\""));

  bench->board.faults.refusedByte.reset();
  bench->images.CodeMax = 65536;
  bench->InIspMode();
  isp.DoProgram(view);
  EXPECT_THAT(view.Take(), testing::Contains("Label3 \"programcode fail\""));
  const Lines sent = bench->TakeFrames();
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "S 96 A0 00 P"), 1) << "no page number wraps";
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "S 96 A0 FF P"), 1);
}

TEST_F(IspOperationsTest, ARefusedDataFrameGoesOnAndTheCrcDecides) {
  bench->Load(Image(600));
  bench->InIspMode();
  bench->board.faults.refusedByte = {bench->board.wire.FramesSeen() + 5, 9};
  isp.DoProgram(view);
  EXPECT_THAT(view.Take(), testing::Contains("Label3 \"programcode ok\""));
  EXPECT_EQ(bench->TakeFrames()[7], "S 96 A0 02 P");
  EXPECT_EQ(view.operationText, "CRC Error");
}

TEST_F(IspOperationsTest, PageReadShowsTheChipsPage) {
  bench->Load(Image(0x1B00));
  bench->InIspMode();
  isp.DoProgram(view);
  bench->InIspMode();
  view.answers = {"1", "1A"};
  isp.DoPageRead(view);
  const std::string ask = "ask please input you want read page number:(00-FF)|input number|00";
  EXPECT_THAT(view.Take(), ElementsAre("Label2 \"\"", "Label3 \"\"", "Label2 black",
                                       "Label2 \"read_code:isp mode is  exist\"", ask,
                                       "message please input two word HEX number:(00-FF)", ask,
                                       "data this is 1A  page (Read Page Code)"));
  const Lines frames = bench->TakeFrames();
  EXPECT_EQ(frames[0], "S 96 00 1A P");
  EXPECT_THAT(frames[1], testing::StartsWith("S 94 00 Sr 95 ["));
  bench->InIspMode();
  isp.ReadChipPage(0x1A, view);
  isp.ShowReadPage(0x1A, view);
  const std::string read = view.data;
  bench->writer.IspOperate = IspOperation::PageLoad;
  view.answers = {"1A"};
  bench->writer.Run(view);
  EXPECT_EQ(view.data.substr(view.data.find('\n')), read.substr(read.find('\n')));

  bench->board.faults.unpluggedAfterFrame = 0;
  view.data = "as before";
  view.answers = {"03"};
  isp.DoPageRead(view);
  EXPECT_EQ(view.data, "as before") << "a refused page is not shown";
  EXPECT_THAT(view.Take(), testing::IsSupersetOf({"Label3 red", "Label3 \"Page Read fail\""}));
}

TEST_F(IspOperationsTest, EveryOperationIsRefusedOutsideIspMode) {
  isp.DoProgram(view);
  EXPECT_THAT(view.Take(),
              ElementsAre("Label2 \"\"", "Label3 \"\"", "Label2 red",
                          "Label2 \"program:isp mode is not exist\"", "Label2 repaint"));
  isp.DoPageErase(view);
  EXPECT_EQ(view.Take().back(), "Label2 \"page erase:isp mode is not exist\"");
  isp.DoPageRead(view);
  EXPECT_EQ(view.Take().back(), "Label2 \"read_code:isp mode is not exist\"");
  EXPECT_THAT(bench->TakeFrames(), IsEmpty());
}

}  // namespace
