// The tool as it is put together.
#include "tool/tool.h"

#include <gmock/gmock.h>

#include <memory>

#include "support/board_rig.h"
#include "support/line_trace.h"
#include "support/rtd_transcript.h"
#include "support/temp_folder.h"
#include "support/transcript.h"

namespace {

using simulator::ConnectedChip;

/// A tenth of a second passes between two readings.
struct PassingTime final : FakeTicks {
  std::chrono::nanoseconds now{};
  std::chrono::nanoseconds FineTime() override { return now += std::chrono::milliseconds(100); }
};

TEST(Tool, RunsOfBothWritersAreLogged) {
  const TempFolder folder;
  PassingTime ticks;
  simulator::SimulatedBoard board{Wiring()};
  const auto tool = std::make_unique<Tool>(board.cable, ticks,
                                           Directories{.programFolder = folder / "program",
                                                       .settingsFolder = folder / "config",
                                                       .stateFolder = folder / "state"},
                                           Problem{});
  tool->boards.BoardTable[0] = Wiring();
  tool->boards.BoardTable[0].name = "a board";
  tool->port.InitPortShadows();
  tool->frames.IspParams = {0x94, 2, 0x5A, 0xA5};

  board.Connect(ConnectedChip::Vsk830);
  Transcript vskView;
  tool->vskWriter.GoToIspMode(vskView);
  tool->vskWriter.RunFromMenu(RunChoice::EraseAll, vskView);
  board.Connect(ConnectedChip::Rtd2120);
  RtdTranscript rtdView;
  tool->rtdWriter.OperateMode = tongxun2120::RtdOperateMode::EraseOnly;
  tool->rtdWriter.Run(rtdView);

  EXPECT_THAT(
      folder.Read("state/runs.csv"),
      testing::ContainsRegex("Z,0.1,VSK830,Erase All,,,,,Blank ok,378,a board,isp-writer\r\n.*"
                             "Z,0.1,RTD2120,Erase,,,,,Erase MCU OK.,378,a board,isp-writer\r\n$"));
}

TEST(Tool, TheEndReleasesBothLines) {
  LineTrace lines;
  FakeTicks ticks;
  auto tool = std::make_unique<Tool>(lines, ticks, Directories{}, Problem{});
  tool->boards.BoardTable[0] = TraceBoard();
  tool->port.InitPortShadows();
  tool->port.SetSclLow();
  tool->port.SetSdaLow();
  lines.Take();
  tool.reset();
  EXPECT_EQ(lines.Take(), "C1 D1");
}

}  // namespace
