// The tool on simulated boards: the same windows, and one that shows the board.
//
//   isp-writer-simulator                 opens the windows
//   isp-writer-simulator --demo FOLDER SAMPLES
//                                        plays the operator's session by itself, leaves screenshots
//                                        in FOLDER; exit status 0 only when every step held
#include <QApplication>
#include <cstdio>
#include <exception>
#include <memory>

#include "app/options.h"
#include "session/demo_session.h"
#include "simulator/simulated_board.h"
#include "simulator_window/board_window.h"
#include "tool/tool.h"
#include "ui/launcher.h"
#include "widgets/application_style.h"
#include "widgets/dialogs.h"

namespace {

/// Exit status. A window that is not open, or has no such control, ends the session.
int Play(DemoSession& demo) {
  try {
    return demo.Play() ? 0 : 1;
  } catch (const std::exception& failure) {
    std::printf("  WRONG: %s\nThe session FAILED.\n", failure.what());
  }
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (AnswerOption(
          argc, argv, "isp-writer-simulator",
          "writes firmware into simulated microcontrollers, with the windows of isp-writer",
          ", and --demo PICTURES SAMPLES, which plays an operator's session")) {
    return 0;
  }
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  ApplyApplicationStyle();

  using namespace simulator;
  const auto board = std::make_unique<SimulatedBoard>(CableWiring());
  board->Connect(ConnectedChip::Vsk830);
  const auto ticks = SystemTickCounter();
  const Directories directories = SystemDirectories("isp-writer-simulator");
  FillProgramFolder(directories, PostProblem);
  const auto tool = std::make_unique<Tool>(board->cable, *ticks, directories, PostProblem,
                                           "isp-writer-simulator");
  Main launcher(*tool);
  BoardWindow boardWindow(*board);
  launcher.show();
  boardWindow.ShowBeside(launcher);

  const QStringList arguments = QApplication::arguments();
  if (arguments.value(1) == QLatin1String("--demo")) {
    DemoSession demo(*board, launcher, boardWindow, arguments.value(2), arguments.value(3));
    return Play(demo);
  }
  return QApplication::exec();
}
