// "Run", the menu commands and paging, on the simulated chip.
#include "vsk/vsk_writer.h"

#include <gmock/gmock.h>

#include "support/temp_folder.h"
#include "support/vsk_rig.h"
#include "text/hex_text.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kAskPage = "ask please input you want read page number:(00-FF)|input number|00";

using Lines = std::vector<std::string>;

struct VskWriterTest : testing::Test {
  std::unique_ptr<VskRig> rig = std::make_unique<VskRig>();
  Transcript& view = rig->view;
  VskWriter& writer = rig->writer;

  Lines Run(IspOperation operation) {
    writer.IspOperate = operation;
    view.Take();
    writer.Run(view);
    return view.Take();
  }
  /// The heading of the page that the data display shows then.
  std::string Step(IspOperation step) {
    writer.StepPage(step, view);
    return view.data.substr(0, view.data.find('\r'));
  }
};

TEST_F(VskWriterTest, NothingRunsOutsideIspModeNorWithoutAnImage) {
  const Lines noImage{"Label2: isp mode is exist", "message the hexfile is not load"};
  rig->InIspMode();
  EXPECT_EQ(Run(IspOperation::Program), noImage);
  EXPECT_EQ(Run(IspOperation::PageLoad), noImage);
  EXPECT_FALSE(writer.LoadPageView);

  rig->isp.IspModeOn = false;
  rig->Load({1, 2, 3});
  view.answers = {"10"};
  for (int operation = 1; operation <= 7; ++operation) {
    EXPECT_THAT(Run(static_cast<IspOperation>(operation)),
                ElementsAre("Label2: isp mode is not exist"));
  }
  EXPECT_THAT(rig->TakeFrames(), IsEmpty());
}

TEST_F(VskWriterTest, TellsWhatWasProgrammedOrErased) {
  std::vector<RunLine> told;
  writer.RunEnded = [&](const RunLine& line) { told.push_back(line); };
  rig->Load({1, 2, 3});
  rig->images.CodeFiles = {{.name = "a.hex"}};
  for (const auto operation : {IspOperation::Program, IspOperation::EraseAll,
                               IspOperation::PageErase, IspOperation::PageRead}) {
    rig->EnterIspMode();
    Run(operation);  // the questions of the last two are cancelled
  }
  const std::string crc = HexText(rig->images.CodeCrc);
  EXPECT_THAT(told, ElementsAre(RunLine{"VSK830", "Program", "a.hex", 3, crc, crc, "Write Ok"},
                                RunLine{"VSK830", "Erase All", "", 0, "", "", "Blank ok"}));
}

TEST_F(VskWriterTest, TheRunLogKeepsWhatTurnedTheResultRed) {
  RunResult told;
  writer.RunEnded = [&](const RunLine& line) { told = line.result; };
  rig->Load({1, 2, 3});
  rig->InIspMode();
  rig->board.faults.refusedByte = {rig->board.wire.FramesSeen() + 5, 2};  // the page's data
  Run(IspOperation::Program);
  EXPECT_EQ(told, (RunResult{"CRC Error", "programcode fail"}));
  rig->images.CodeCrc = 0;
  rig->InIspMode();
  rig->board.Connect(simulator::ConnectedChip::None);
  Run(IspOperation::Program);
  EXPECT_EQ(told, (RunResult{"Write Ok", "programcode fail"})) << "a silent bus reads as CRC 0";
  Run(IspOperation::EraseAll);
  EXPECT_EQ(told, (RunResult{"Write Ok", "programcode fail"})) << "not in ISP mode";
}

TEST_F(VskWriterTest, ARunThatSentNothingIsNotTold) {
  writer.RunEnded = [](const RunLine& line) { FAIL() << line.result.text; };
  rig->InIspMode();
  for (const auto& answers :
       {std::deque<std::string>{"0400", "0100"}, {"8000", "FFFF"}, {"0000"}}) {
    view.answers = answers;
    Run(IspOperation::PageErase);
  }
  EXPECT_THAT(rig->TakeFrames(), IsEmpty());
}

TEST_F(VskWriterTest, EachModelsImageHasFilesOfItsOwn) {
  TempFolder folder;
  std::vector<std::string> told;
  writer.RunEnded = [&](const RunLine& line) { told.push_back(line.file); };
  const auto load = [&](VskChip chip, const std::string& name) {
    rig->isp.ChipSelect = chip;
    view.file = folder.Write(name, "123");
    writer.Load(view);
  };
  const auto program = [&](VskChip chip) {
    rig->isp.ChipSelect = chip;
    rig->InIspMode();
    Run(IspOperation::Program);
  };
  load(VskChip::Vsk830, "one.bin");
  program(VskChip::Vsk630);
  load(VskChip::Vsk630, "pair.B00");
  program(VskChip::Vsk830);
  program(VskChip::Vsk630);
  load(VskChip::Vsk830, "one.bin");
  program(VskChip::Vsk630);
  program(VskChip::Vsk830);
  const std::string pair = (folder / "pair.B00").string();
  EXPECT_THAT(told, ElementsAre("", "", pair, pair, (folder / "one.bin").string()))
      << "a pair overwrites the image of one file, and is kept beside one";
}

TEST_F(VskWriterTest, ProgramAsksWhenAFileHasChanged) {
  TempFolder folder;
  int runs = 0;
  writer.RunEnded = [&](const RunLine&) { ++runs; };
  folder.Write("a.B01", "456");
  rig->board.Connect(simulator::ConnectedChip::Vsk630);
  rig->isp.ChipSelect = VskChip::Vsk630;
  view.file = folder.Write("a.B00", "123");
  writer.Load(view);
  const auto question = [&](const char* name) {
    return "confirm " + (folder / name).string() +
           " has changed since it was loaded. Program what was loaded?";
  };
  folder.Write("a.B01", "457");
  EXPECT_THAT(Run(IspOperation::Program), ElementsAre("Label2: isp mode is not exist"));
  rig->InIspMode();
  view.confirmed = false;
  EXPECT_THAT(Run(IspOperation::Program),
              ElementsAre("Label2: isp mode is exist", question("a.B01")));
  EXPECT_THAT(rig->TakeFrames(), IsEmpty());
  EXPECT_EQ(runs, 0);
  view.confirmed = true;
  writer.RunFromMenu(IspOperation::Program, view);
  EXPECT_THAT(view.Take(), testing::Contains(question("a.B01")));
  EXPECT_EQ(runs, 1);

  folder.Write("a.B00", "x");
  std::filesystem::remove(folder / "a.B01");
  rig->InIspMode();
  view.confirmed = false;
  EXPECT_THAT(Run(IspOperation::Program), testing::Contains(question("a.B00")));
  folder.Write("a.B00", "123");
  EXPECT_THAT(Run(IspOperation::EraseAll), testing::Not(testing::Contains(question("a.B00"))));
  EXPECT_THAT(Run(IspOperation::Program), testing::Contains("Label3: Write Ok"))
      << "unchanged, and gone";
  EXPECT_EQ(runs, 3);
}

TEST_F(VskWriterTest, PageLoadThenPaging) {
  rig->Load({1, 2, 3});
  rig->InIspMode();
  writer.ReadPageView = true;
  rig->isp.ReadPage = 9;
  view.answers = {"1", "1x", "fe"};
  const std::string again = "message please input two word HEX number:(00-FF)";
  const std::string kind = "  page (Load Hex File Code)";
  EXPECT_THAT(Run(IspOperation::PageLoad),
              ElementsAre("Label2: isp mode is exist", kAskPage, again, kAskPage, again, kAskPage,
                          "data this is FE" + kind));
  EXPECT_EQ(Step(IspOperation::NextPage), "this is FF" + kind);
  EXPECT_EQ(Step(IspOperation::NextPage), "this is FF" + kind);
  EXPECT_EQ(writer.IspOperate, IspOperation::PageLoad);
  EXPECT_FALSE(writer.ReadPageView);
  EXPECT_EQ(rig->isp.ReadPage, 0);
  writer.LoadPage = 1;
  EXPECT_EQ(Step(IspOperation::PreviousPage), "this is 0" + kind);
  EXPECT_EQ(Step(IspOperation::PreviousPage), "this is 0" + kind);
  EXPECT_THAT(Run(IspOperation::PageLoad), ElementsAre("Label2: isp mode is exist", kAskPage))
      << "cancelled";
}

TEST_F(VskWriterTest, PageReadThenPagingReadsTheChip) {
  rig->InIspMode();
  writer.LoadPageView = true;
  writer.LoadPage = 9;
  view.answers = {"03"};
  view.pageRead = true;
  Run(IspOperation::PageRead);
  EXPECT_EQ(Step(IspOperation::NextPage), "this is 4  page (Read Page Code)");
  EXPECT_EQ(rig->TakeFrames()[2], "S 96 00 04 P");
  EXPECT_EQ(writer.IspOperate, IspOperation::PageRead);
  EXPECT_EQ(writer.LoadPage, 0);

  rig->board.faults.unpluggedAfterFrame = 0;
  const auto firstRow = [this] { return view.data.substr(view.data.find("    "), 52); };
  const std::string before = firstRow();
  rig->isp.ReadPage = 0;
  EXPECT_EQ(Step(IspOperation::PreviousPage), "this is 0  page (Read Page Code)") << "refused";
  EXPECT_EQ(firstRow(), before) << "the old contents, under the new number";
  EXPECT_EQ(view.operationText, "Page Read fail");
  rig->isp.ReadPage = 255;
  EXPECT_EQ(Step(IspOperation::NextPage), "this is FF  page (Read Page Code)");

  writer.LoadPageView = true;
  writer.RunFromMenu(IspOperation::EraseAll, view);
  EXPECT_FALSE(writer.LoadPageView || writer.ReadPageView);
  writer.LoadPage = 5;
  Step(IspOperation::NextPage);
  EXPECT_EQ(writer.LoadPage + rig->isp.ReadPage, 0) << "without a view the pages are forgotten";
}

TEST_F(VskWriterTest, MenuCommandsStayInForce) {
  rig->InIspMode();
  writer.RunFromMenu(IspOperation::EraseAll, view);
  writer.Run(view);
  EXPECT_THAT(rig->TakeFrames(),
              ElementsAre("S 96 68 00 P", "S 94 00 00 P", "S 96 68 00 P", "S 94 00 00 P"));
}

}  // namespace
