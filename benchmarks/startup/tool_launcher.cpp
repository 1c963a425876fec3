// The tool's own start-up, with a tick counter that lets the calibration end at once.
#include "app/port_problem.h"
#include "app/quit_signals.h"
#include "app/tool.h"
#include "startup/shown.h"
#include "ui/controls.h"
#include "ui/launcher.h"

namespace {

/// Advances a second at every reading.
class HastyTicks final : public TickCounter {
 public:
  std::uint32_t GetTickCount() override { return now_ms_ += 1000; }

 private:
  std::uint32_t now_ms_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  ApplyApplicationStyle();

  const QuitSignals quitSignals;
  const auto io = SystemParallelPort(PostPortProblem);
  HastyTicks ticks;
  const auto tool = std::make_unique<Tool>(*io, ticks, SystemDirectories("isp-writer"));
  Main launcher(tool->directories, tool->port, tool->portConfig, tool->timing, tool->buffers,
                tool->frames, tool->isp, tool->vskWriter, tool->rtdWriter);
  return TellWhenShown(launcher);
}
