#include "terminal/interruption.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string_view>

namespace terminal {
namespace {

constexpr std::array kEndSignals{SIGINT, SIGTERM, SIGHUP};
constexpr std::string_view kTold =
    "\nisp-write: ends when the operation that is running has ended\n";

volatile std::sig_atomic_t first = 0;
volatile std::sig_atomic_t skipped = 0;  // characters of what is told: a bar's line ends first

void Note(int signal) {
  if (first != 0) return;
  first = signal;
  const int interrupted = errno;
  const auto skip = static_cast<std::size_t>(skipped);
  [[maybe_unused]] const ssize_t told =
      write(STDERR_FILENO, kTold.data() + skip, kTold.size() - skip);
  errno = interrupted;
}

}  // namespace

Interruption::Interruption() {
  first = 0;
  skipped = isatty(STDERR_FILENO) != 0 ? 0 : 1;
  // Whoever reads the output may go away; the chip is not left half written for it.
  std::signal(SIGPIPE, SIG_IGN);
  for (const int signal : kEndSignals) {
    struct sigaction present {};
    sigaction(signal, nullptr, &present);
    if (present.sa_handler == SIG_IGN) continue;
    struct sigaction note {};
    note.sa_handler = Note;
    note.sa_flags = SA_RESTART;
    sigaction(signal, &note, nullptr);
  }
}

Interruption::~Interruption() {
  for (const int signal : kEndSignals) {
    struct sigaction present {};
    sigaction(signal, nullptr, &present);
    if (present.sa_handler == Note) std::signal(signal, SIG_DFL);
  }
}

int Interruption::Signal() const { return first; }

}  // namespace terminal
