// The program's arguments and its standard error, as the system gives them.
#pragma once

#include <string>
#include <vector>

namespace terminal {

/// Without the program's own name, UTF-8.
std::vector<std::string> Arguments(int argc, char** argv);

/// The standard error is read by a person who sees a line written anew.
bool ErrIsTerminal();

}  // namespace terminal
