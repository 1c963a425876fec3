// The commands that only tell: what a load shows, the PC's ports, the board table. None reaches a
// port's lines.
#pragma once

#include "terminal/command_line.h"
#include "terminal/narrator.h"
#include "terminal/outcome.h"
#include "terminal/surroundings.h"

namespace terminal {

/// Prints what a load shows, unless the file is refused.
Outcome ListCheck(CommandLine line, const Surroundings& with, Narrator& narrator);
/// Each prints its list and returns the exit status.
int ListPorts(const CommandLine& line, const Surroundings& with, Narrator& narrator);
int ListBoards(const CommandLine& line, const Surroundings& with, Narrator& narrator);

}  // namespace terminal
