// The messages about ports in the words of a program without windows.
#pragma once

#include <string>

namespace terminal {

std::string InTerminalWords(std::string message);

}  // namespace terminal
