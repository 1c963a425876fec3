// "Run", the menu commands and paging, on the simulated chip.
#include "vsk/vsk_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/vsk_bench.h"
#include "text/hex_text.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kAskPage = "ask please input you want read page number:(00-FF)|input number|00";

struct VskWriterTest : testing::Test {
  std::unique_ptr<VskBench> bench = std::make_unique<VskBench>();
  Transcript& view = bench->view;
  VskWriter& writer = bench->writer;

  std::string Title() const { return view.data.substr(0, view.data.find('\r')); }
};

TEST_F(VskWriterTest, NothingRunsOutsideIspMode) {
  bench->Load({1, 2, 3});
  view.answers = {"10"};
  for (int operation = 1; operation <= 7; ++operation) {
    writer.IspOperate = static_cast<IspOperation>(operation);
    writer.Run(view);
    EXPECT_THAT(view.Take(), ElementsAre("Label2: isp mode is not exist")) << operation;
  }
  EXPECT_THAT(bench->TakeFrames(), IsEmpty());
}

TEST_F(VskWriterTest, TellsWhatWasProgrammedOrErased) {
  std::vector<RunLine> told;
  writer.RunEnded = [&](const RunLine& line) { told.push_back(line); };
  bench->Load({1, 2, 3});
  bench->images.File = "a.hex";
  const std::string crc = HexText(bench->images.CodeCrc);
  for (const auto operation : {IspOperation::Program, IspOperation::EraseAll,
                               IspOperation::PageErase, IspOperation::PageRead}) {
    bench->EnterIspMode();
    writer.IspOperate = operation;
    writer.Run(view);  // the questions of the last two are cancelled
  }
  EXPECT_THAT(told, ElementsAre(RunLine{"VSK830", "Program", "a.hex", 3, crc, crc, "Write Ok"},
                                RunLine{"VSK830", "Erase All", "", 0, "", "", "Blank ok"}));
}

TEST_F(VskWriterTest, ProgramAndPageLoadNeedAnImage) {
  bench->InIspMode();
  for (const IspOperation operation : {IspOperation::Program, IspOperation::PageLoad}) {
    writer.IspOperate = operation;
    writer.Run(view);
    EXPECT_THAT(view.Take(),
                ElementsAre("Label2: isp mode is exist", "message the hexfile is not load"));
  }
  EXPECT_FALSE(writer.LoadPageView);
  EXPECT_THAT(bench->TakeFrames(), IsEmpty());
}

TEST_F(VskWriterTest, PageLoadThenPaging) {
  bench->Load({1, 2, 3});
  bench->InIspMode();
  writer.IspOperate = IspOperation::PageLoad;
  writer.ReadPageView = true;
  bench->isp.ReadPage = 9;
  view.answers = {"1", "1x", "fe"};
  writer.Run(view);
  const std::string again = "message please input two word HEX number:(00-FF)";
  EXPECT_THAT(view.Take(),
              ElementsAre("Label2: isp mode is exist", kAskPage, again, kAskPage, again, kAskPage,
                          "data this is FE  page (Load Hex File Code)"));
  for (const char* page : {"FF", "FF"}) {
    writer.StepPage(IspOperation::NextPage, view);
    EXPECT_EQ(Title(), std::string("this is ") + page + "  page (Load Hex File Code)");
  }
  EXPECT_EQ(writer.IspOperate, IspOperation::PageLoad);
  EXPECT_FALSE(writer.ReadPageView);
  EXPECT_EQ(bench->isp.ReadPage, 0);
  writer.LoadPage = 1;
  for (int i = 0; i < 2; ++i) {
    writer.StepPage(IspOperation::PreviousPage, view);
    EXPECT_EQ(Title(), "this is 0  page (Load Hex File Code)");
  }
  writer.IspOperate = IspOperation::PageLoad;
  view.Take();
  writer.Run(view);
  EXPECT_THAT(view.Take(), ElementsAre("Label2: isp mode is exist", kAskPage)) << "cancelled";
}

TEST_F(VskWriterTest, PageReadThenPagingReadsTheChip) {
  bench->InIspMode();
  writer.IspOperate = IspOperation::PageRead;
  writer.LoadPageView = true;
  writer.LoadPage = 9;
  view.answers = {"03"};
  view.pageRead = true;
  writer.Run(view);
  writer.StepPage(IspOperation::NextPage, view);
  EXPECT_EQ(bench->TakeFrames()[2], "S 96 00 04 P");
  EXPECT_EQ(Title(), "this is 4  page (Read Page Code)");
  EXPECT_EQ(writer.IspOperate, IspOperation::PageRead);
  EXPECT_EQ(writer.LoadPage, 0);

  bench->board.faults.unpluggedAfterFrame = 0;
  const auto body = [this] { return view.data.substr(view.data.find("    ")).substr(0, 52); };
  const std::string before = body();
  bench->isp.ReadPage = 0;
  writer.StepPage(IspOperation::PreviousPage, view);
  EXPECT_EQ(Title(), "this is 0  page (Read Page Code)") << "shown although it was refused";
  EXPECT_EQ(body(), before) << "the old contents, under the new number";
  EXPECT_EQ(view.operationText, "Page Read fail");
  bench->isp.ReadPage = 255;
  writer.StepPage(IspOperation::NextPage, view);
  EXPECT_EQ(Title(), "this is FF  page (Read Page Code)");
}

TEST_F(VskWriterTest, PagingWithoutAViewForgetsThePages) {
  bench->InIspMode();
  writer.LoadPage = 5;
  bench->isp.ReadPage = 6;
  writer.StepPage(IspOperation::NextPage, view);
  EXPECT_EQ(writer.LoadPage, 0);
  EXPECT_EQ(bench->isp.ReadPage, 0);
  EXPECT_THAT(view.Take(), ElementsAre("Label2: isp mode is exist"));
}

TEST_F(VskWriterTest, MenuCommandsStayInForce) {
  bench->InIspMode();
  writer.LoadPageView = writer.ReadPageView = true;
  writer.RunFromMenu(IspOperation::EraseAll, view);
  EXPECT_FALSE(writer.LoadPageView || writer.ReadPageView);
  writer.Run(view);
  EXPECT_THAT(bench->TakeFrames(),
              ElementsAre("S 96 68 00 P", "S 94 00 00 P", "S 96 68 00 P", "S 94 00 00 P"));
}

}  // namespace
