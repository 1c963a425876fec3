// The tool's own start-up, with a tick counter that lets the calibration end at once.
#include "app/quit_signals.h"
#include "startup/hasty_ticks.h"
#include "startup/shown.h"
#include "tool/tool.h"
#include "ui/launcher.h"
#include "widgets/application_style.h"
#include "widgets/dialogs.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  ApplyApplicationStyle();

  const QuitSignals quitSignals;
  const auto io = SystemParallelPort({}, PostProblem);
  HastyTicks ticks;
  const auto tool =
      std::make_unique<Tool>(*io, ticks, SystemDirectories("isp-writer"), PostProblem);
  Main launcher(*tool);
  return TellWhenShown(launcher);
}
