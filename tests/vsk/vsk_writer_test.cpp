// "Run", the menu commands and paging, on the simulated chip.
#include "vsk/vsk_writer.h"

#include <gmock/gmock.h>

#include "support/temp_folder.h"
#include "support/vsk_rig.h"
#include "text/hex_text.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

const std::string kAskPage = "ask please input you want read page number:(00-FF)|input number|00";

using Lines = std::vector<std::string>;

struct VskWriterTest : testing::Test, VskRig {
  RunChoice shown = RunChoice::PageLoad;  // the option that is selected

  Lines Run(RunChoice operation) {
    writer.IspOperate = operation;
    view.Take();
    writer.Run(view);
    return view.Take();
  }
  /// The heading of the page that the data display shows then.
  std::string Step(RunChoice step) {
    writer.StepPage(step, shown, view);
    return view.data.substr(0, view.data.find('\r'));
  }
};

TEST_F(VskWriterTest, NothingRunsOutsideIspModeNorWithoutAnImage) {
  const Lines noImage{"Label2: isp mode is exist", "message the hexfile is not load"};
  InIspMode();
  EXPECT_EQ(Run(RunChoice::Program), noImage);
  EXPECT_EQ(Run(RunChoice::PageLoad), noImage);
  EXPECT_FALSE(writer.LoadPageView);

  isp.IspModeOn = false;
  Load({1, 2, 3});
  view.answers = {"10"};
  for (int operation = 1; operation <= 7; ++operation) {
    EXPECT_THAT(Run(static_cast<RunChoice>(operation)),
                ElementsAre("Label2: isp mode is not exist"));
  }
  EXPECT_THAT(TakeFrames(), IsEmpty());
}

TEST_F(VskWriterTest, TellsWhatWasProgrammedOrErased) {
  std::vector<RunLine> told;
  report.Ended = [&](const RunLine& line) { told.push_back(line); };
  ticks.fineStep = 99'600us;
  Load({1, 2, 3});
  images.CodeFiles = {{.name = "a.hex"}};
  view.answers = {"0400", "0100", "0000"};  // no page; all questions behind the third are cancelled
  for (const auto operation : {RunChoice::Program, RunChoice::EraseAll, RunChoice::PageErase,
                               RunChoice::PageErase, RunChoice::PageErase, RunChoice::PageRead}) {
    EnterIspMode();
    Run(operation);
  }
  const RunImage image{"a.hex", 3, 0, images.CodeCrc, images.CodeCrc};
  EXPECT_THAT(told, ElementsAre(RunLine{"VSK830", "Program", {image}, {"Write Ok"}, 100ms},
                                RunLine{"VSK830", "Erase All", {}, {"Blank ok"}, 100ms}));
}

TEST_F(VskWriterTest, EachModelsImageHasFilesOfItsOwn) {
  TempFolder folder;
  std::vector<std::string> told;
  report.Ended = [&](const RunLine& line) { told.push_back(line.images.at(0).file); };
  const auto load = [&](VskChip chip, const std::string& name) {
    isp.ChipSelect = chip;
    EXPECT_TRUE(writer.Load(folder.Write(name, "123"), view).Ok());
  };
  const auto program = [&](VskChip chip) {
    isp.ChipSelect = chip;
    InIspMode();
    Run(RunChoice::Program);
  };
  load(VskChip::Vsk830, "one.bin");
  load(VskChip::Vsk630, "pair.B00");
  program(VskChip::Vsk830);
  program(VskChip::Vsk630);
  load(VskChip::Vsk830, "one.bin");
  program(VskChip::Vsk630);
  program(VskChip::Vsk830);
  const std::string pair = (folder / "pair.B00").string();
  EXPECT_THAT(told, ElementsAre("", pair, pair, (folder / "one.bin").string()))
      << "a pair overwrites the image of one file, and is kept beside one";
}

TEST_F(VskWriterTest, ProgramAsksWhenAFileHasChanged) {
  TempFolder folder;
  int runs = 0;
  report.Ended = [&](const RunLine&) { ++runs; };
  folder.Write("a.B01", "456");
  board.Connect(simulator::ConnectedChip::Vsk630);
  isp.ChipSelect = VskChip::Vsk630;
  EXPECT_TRUE(writer.Load(folder.Write("a.B00", "123"), view).Ok());
  const auto question = [&](const char* name) {
    return "confirm " + (folder / name).string() +
           " has changed since it was loaded. Program what was loaded?";
  };
  for (const char* name : {"a.B00", "a.B01"}) folder.Write(name, "another");
  EXPECT_THAT(Run(RunChoice::Program), ElementsAre("Label2: isp mode is not exist"));
  InIspMode();
  view.confirmed = false;
  EXPECT_THAT(Run(RunChoice::Program), ElementsAre("Label2: isp mode is exist", question("a.B00")));
  EXPECT_THAT(TakeFrames(), IsEmpty());
  EXPECT_EQ(runs, 0);
  EXPECT_THAT(Run(RunChoice::EraseAll), testing::Not(testing::Contains(question("a.B00"))));
  TakeFrames();
  view.confirmed = true;
  view.whileAsked = [&] { isp.ChipSelect = VskChip::Vsk830; };
  Run(RunChoice::Program);
  EXPECT_THAT(TakeFrames(), IsEmpty()) << "of the other chip no file was asked about";
  view.whileAsked = [] {};
  isp.ChipSelect = VskChip::Vsk630;
  writer.RunFromMenu(RunChoice::Program, view);
  EXPECT_THAT(view.Take(), testing::IsSupersetOf({question("a.B00"), question("a.B01"),
                                                  std::string("Label3: Write Ok")}));
  EXPECT_EQ(runs, 2);
}

TEST_F(VskWriterTest, PageLoadThenPaging) {
  Load({1, 2, 3});
  InIspMode();
  writer.ReadPageView = true;
  writer.ReadPage = 9;
  view.answers = {"1", "1x", "fe"};
  const std::string again = "message please input two word HEX number:(00-FF)";
  const std::string kind = "  page (Load Hex File Code)";
  EXPECT_THAT(Run(RunChoice::PageLoad),
              ElementsAre("Label2: isp mode is exist", kAskPage, again, kAskPage, again, kAskPage,
                          "data this is FE" + kind));
  EXPECT_EQ(Step(RunChoice::NextPage), "this is FF" + kind);
  EXPECT_EQ(Step(RunChoice::NextPage), "this is FF" + kind);
  EXPECT_EQ(writer.IspOperate, RunChoice::PageLoad);
  EXPECT_FALSE(writer.ReadPageView);
  EXPECT_EQ(writer.ReadPage, 0);
  writer.LoadPage = 1;
  EXPECT_EQ(Step(RunChoice::PreviousPage), "this is 0" + kind);
  EXPECT_EQ(Step(RunChoice::PreviousPage), "this is 0" + kind);
  EXPECT_THAT(Run(RunChoice::PageLoad), ElementsAre("Label2: isp mode is exist", kAskPage))
      << "cancelled";
}

TEST_F(VskWriterTest, PageReadThenPagingReadsTheChip) {
  InIspMode();
  writer.LoadPageView = true;
  writer.LoadPage = 9;
  view.answers = {"03"};
  shown = RunChoice::PageRead;
  Run(RunChoice::PageRead);
  EXPECT_EQ(Step(RunChoice::NextPage), "this is 4  page (Read Page Code)");
  EXPECT_EQ(TakeFrames()[2], "S 96 00 04 P");
  EXPECT_EQ(writer.IspOperate, RunChoice::PageRead);
  EXPECT_EQ(writer.LoadPage, 0);

  board.faults.unpluggedAfterFrame = 0;
  const auto firstRow = [this] { return view.data.substr(view.data.find("    "), 52); };
  const std::string before = firstRow();
  writer.ReadPage = 0;
  EXPECT_EQ(Step(RunChoice::PreviousPage), "this is 0  page (Read Page Code)") << "refused";
  EXPECT_EQ(firstRow(), before) << "the old contents, under the new number";
  EXPECT_EQ(view.operationText, "Page Read fail");
  writer.ReadPage = 255;
  EXPECT_EQ(Step(RunChoice::NextPage), "this is FF  page (Read Page Code)");

  writer.LoadPageView = true;
  writer.RunFromMenu(RunChoice::EraseAll, view);
  EXPECT_FALSE(writer.LoadPageView || writer.ReadPageView);
  writer.LoadPage = 5;
  Step(RunChoice::NextPage);
  EXPECT_EQ(writer.LoadPage + writer.ReadPage, 0) << "without a view the pages are forgotten";
}

}  // namespace
