// The tool's own start-up, with a tick counter that lets the calibration end at once.
#include "widgets/problem_box.h"
#include "app/quit_signals.h"
#include "tool/tool.h"
#include "startup/shown.h"
#include "support/fake_ticks.h"
#include "widgets/controls.h"
#include "ui/launcher.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  ApplyApplicationStyle();

  const QuitSignals quitSignals;
  const auto io = SystemParallelPort(PostProblem);
  FakeTicks ticks;
  const auto tool = std::make_unique<Tool>(*io, ticks, SystemDirectories("isp-writer"));
  Main launcher(tool->directories, tool->port, tool->portConfig, tool->timing, tool->buffers,
                tool->frames, tool->isp, tool->vskWriter, tool->rtdWriter);
  return TellWhenShown(launcher);
}
