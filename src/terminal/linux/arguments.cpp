#include "terminal/arguments.h"

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

void ShowUtf8() {}

}  // namespace terminal
