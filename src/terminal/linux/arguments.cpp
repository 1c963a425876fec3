#include "terminal/arguments.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace terminal {

std::vector<std::string> Arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

bool ErrIsTerminal() {
  const char* kind = std::getenv("TERM");
  return isatty(STDERR_FILENO) != 0 && kind != nullptr && std::string_view(kind) != "dumb";
}

}  // namespace terminal
