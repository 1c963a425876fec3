// The tool on a kernel's port that goes away in the middle of a session.
#include <gmock/gmock.h>

#include "support/fake_port_system.h"
#include "support/fake_ticks.h"
#include "support/line_trace.h"
#include "support/rtd_transcript.h"
#include "support/transcript.h"
#include "tool/tool.h"

namespace {

/// A status that never changes acknowledges everything: so does the driver of a port that has gone.
using Command = std::function<void(VskWriter&, IspView&)>;

struct Session : PortRig {
  FakeTicks ticks{4};
  const std::unique_ptr<Tool> tool = std::make_unique<Tool>(*io, ticks, Directories{}, Problem{});
  VskWriter& writer = tool->vskWriter;
  Transcript view;

  Session() {
    AddUsualPort();
    tool->boards.BoardTable[0] = TraceBoard();
    tool->port.InitPortShadows();
    tool->frames.IspParams = {0x94, 2, 0x5A, 0xA5};
    writer.IspOperate = RunChoice::EraseAll;
    EXPECT_EQ(After(&VskWriter::GoToIspMode), "isp mode is exist");
    Calls();
  }
  std::string After(const Command& command) {
    command(writer, view);
    return view.modeText;
  }
};

TEST(LostPort, EndsIspModeWithTheNextCommandAndIsToldOnce) {
  for (const auto& [first, shown] :
       {std::pair<Command, const char*>{&VskWriter::Run, "isp mode is not exist"},
        {&VskWriter::GoToIspMode, "isp mode is no exist"},
        {&VskWriter::QuitIspMode, "isp mode is out"}}) {
    Session session;
    session.kernel.looks = 0;
    session.After(&VskWriter::Run);
    EXPECT_EQ(session.view.operationText, "Blank ok");
    EXPECT_EQ(session.kernel.looks, 1) << "once in an operation";
    session.Calls();
    session.kernel.RemoveUsualPort();
    EXPECT_EQ(session.After(first), shown);
    EXPECT_EQ(session.After(&VskWriter::Run), "isp mode is not exist");
    EXPECT_EQ(session.After(&VskWriter::GoToIspMode), "isp mode is no exist");
    EXPECT_EQ(session.Calls(), "PPWCONTROL=0C PPWDATA=A5 PPRELEASE close") << "nothing is sent";
    EXPECT_EQ(session.told.size(), 1U);
  }
}

TEST(LostPort, IsToldByTheRtd2120) {
  Session session;
  session.kernel.RemoveUsualPort();
  RtdTranscript box;
  session.tool->rtdWriter.Run(box);
  EXPECT_TRUE(box.red);
  EXPECT_EQ(session.told.size(), 1U);
}

}  // namespace
