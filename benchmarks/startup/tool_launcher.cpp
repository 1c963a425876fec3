// The tool's own start-up, with a tick counter that lets the calibration end at once.
#include "app/quit_signals.h"
#include "startup/shown.h"
#include "tool/tool.h"
#include "ui/launcher.h"
#include "widgets/application_style.h"
#include "widgets/dialogs.h"

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
  const auto io = SystemParallelPort({}, PostProblem);
  HastyTicks ticks;
  const auto tool =
      std::make_unique<Tool>(*io, ticks, SystemDirectories("isp-writer"), PostProblem);
  Main launcher(*tool);
  return TellWhenShown(launcher);
}
