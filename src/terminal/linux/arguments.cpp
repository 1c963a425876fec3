#include "terminal/arguments.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

namespace terminal {

std::vector<std::string> Arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

std::string EnvironmentText(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

bool ErrIsTerminal() {
  const std::string kind = EnvironmentText("TERM");
  return isatty(STDERR_FILENO) != 0 && !kind.empty() && kind != "dumb";
}

void PrepareStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // The lowest number that is free is given out.
    if (fcntl(stream, F_GETFD) < 0 && open("/dev/null", O_RDWR) != stream) return;
  }
}

}  // namespace terminal
