// The program `isp-write`: one command on one chip, from a terminal or a script.
#pragma once

#include <string>
#include <vector>

#include "terminal/surroundings.h"

namespace terminal {

/// `arguments`: without the program's own name. Returns the exit status.
int IspWrite(const std::vector<std::string>& arguments, const Surroundings& with);

}  // namespace terminal
