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

void Note(int signal) {
  if (first != 0) return;
  first = signal;
  const int interrupted = errno;
  [[maybe_unused]] const ssize_t told = write(STDERR_FILENO, kTold.data(), kTold.size());
  errno = interrupted;
}

}  // namespace

Interruption::Interruption() {
  first = 0;
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
