// The tool on the PC's parallel port.
#include <QApplication>
#include <cstdio>
#include <exception>
#include <memory>

#include "app/options.h"
#include "app/quit_signals.h"
#include "bus/recording_port.h"
#include "platform/files.h"
#include "tool/tool.h"
#include "ui/launcher.h"
#include "widgets/application_style.h"
#include "widgets/dialogs.h"

namespace {

/// For support: the accesses to the port go to the file that the environment names. Null when it
/// names none.
std::unique_ptr<RecordingPort> RecordingAskedFor(PortIo& io) {
  const QString file = qEnvironmentVariable("ISP_WRITER_RECORD");
  if (file.isEmpty()) return nullptr;
  return std::make_unique<RecordingPort>(io, PathOf(file.toStdString()), PostProblem);
}

int RunTool(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  ApplyApplicationStyle();

  const QuitSignals quitSignals;  // outlives the port: a second signal must not cut its end short
  const Directories directories = SystemDirectories("isp-writer");
  FillProgramFolder(directories, PostProblem);
  const auto io = SystemParallelPort(directories.programFolder / "Initial", PostProblem);
  const auto ticks = SystemTickCounter();
  const auto recording = RecordingAskedFor(*io);
  const auto tool =
      std::make_unique<Tool>(recording ? *recording : *io, *ticks, directories, PostProblem);
  if (recording) recording->FollowBoards(tool->boards);
  Main launcher(*tool);
  // Windows ends the program together with the session, without a return from the event loop.
  QObject::connect(
      &application, &QApplication::commitDataRequest, &application,
      [&] { tool->port.ReleaseLines(); }, Qt::DirectConnection);
  launcher.show();
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  if (AnswerOption(argc, argv, "isp-writer",
                   "writes firmware into microcontrollers through the PC's parallel port")) {
    return 0;
  }
  // Without a handler the stack need not be unwound, and the port would not be given back.
  try {
    return RunTool(argc, argv);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "isp-writer: %s\n", failure.what());
  } catch (...) {
    std::fputs("isp-writer: unknown error\n", stderr);
  }
  return 1;
}
