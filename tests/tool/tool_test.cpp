// The tool as it is put together.
#include "tool/tool.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/line_trace.h"

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
