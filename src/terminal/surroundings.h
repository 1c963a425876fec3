// What the program stands in: streams, time, folders, the way to a port, signals. A test brings its
// own.
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "platform/directories.h"
#include "platform/port_io.h"
#include "platform/single_use.h"
#include "platform/tick_counter.h"

namespace terminal {

struct Surroundings {
  std::ostream& out;  // the result, and nothing else
  std::ostream& err;
  bool errIsTerminal = false;
  TickCounter& ticks;
  Directories directories;                     // of the windows' program: both share settings
  std::filesystem::path simulatedStateFolder;  // of the log of runs on simulated boards
  std::function<std::unique_ptr<PortIo>(const std::filesystem::path& boardFolder, Problem report)>
      openPort = SystemParallelPort;
  std::function<std::unique_ptr<SingleUse>(const std::string& what)> holdAlone = HoldAlone;
  std::function<int()> signal = [] { return 0; };  // that asked for the end; 0 for none
  std::string recording = {};                      // file for all port accesses; empty for none
  std::string version = {};                        // one line
};

}  // namespace terminal
