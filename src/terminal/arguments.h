// The program's arguments, its environment and its streams, as the system gives them.
#pragma once

#include <string>
#include <vector>

namespace terminal {

/// Without the program's own name, UTF-8.
std::vector<std::string> Arguments(int argc, char** argv);

/// The value of the environment's variable, UTF-8; empty when there is none.
std::string EnvironmentText(const char* name);

/// The standard error is read by a person who sees a line written anew.
bool ErrIsTerminal();

/// What is closed of the standard input, output and error is opened on nothing, so that no file
/// that is opened later, a port's among them, takes its number and gets what is said. On Windows,
/// until the program ends, a console shows what is written to it as UTF-8, as a terminal of Linux
/// does anyway.
void PrepareStreams();

}  // namespace terminal
