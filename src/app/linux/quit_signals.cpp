#include "app/quit_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>

namespace {

constexpr std::array kQuitSignals{SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t writeEnd = -1;  // of the pipe that wakes the event loop

// A full pipe wakes the event loop as well, so the result of the write does not matter.
void WakeEventLoop(int) {
  const int interrupted = errno;
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = write(writeEnd, &byte, 1);
  errno = interrupted;
}

void Catch(int signal) {
  struct sigaction present {};
  sigaction(signal, nullptr, &present);
  if (present.sa_handler == SIG_IGN) return;
  struct sigaction wake {};
  wake.sa_handler = WakeEventLoop;
  wake.sa_flags = SA_RESTART;
  sigaction(signal, &wake, nullptr);
}

void LetGo(int signal) {
  struct sigaction present {};
  sigaction(signal, nullptr, &present);
  if (present.sa_handler == WakeEventLoop) std::signal(signal, SIG_DFL);
}

}  // namespace

/// The pipe, and what listens at its end.
struct QuitSignals::Watch {
  explicit Watch(std::array<int, 2> pipe) : ends(pipe), notifier(ends[0], QSocketNotifier::Read) {}
  ~Watch() {
    notifier.setEnabled(false);
    for (const int end : ends) close(end);
  }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  const std::array<int, 2> ends;
  QSocketNotifier notifier;
};

QuitSignals::QuitSignals() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
    throw std::system_error(errno, std::generic_category(), "pipe");
  }
  watch_ = std::make_unique<Watch>(ends);
  writeEnd = ends[1];
  // The byte stays in the pipe, so that an `exit` that met no running loop is said again in it.
  QObject::connect(&watch_->notifier, &QSocketNotifier::activated,
                   [] { QCoreApplication::exit(); });
  for (const int signal : kQuitSignals) Catch(signal);
}

QuitSignals::~QuitSignals() {
  for (const int signal : kQuitSignals) LetGo(signal);
}
