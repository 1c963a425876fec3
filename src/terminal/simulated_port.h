// The simulated board that stands in for the port: the chip that fits, faults by their names, and a
// flash that outlives the program.
#pragma once

#include <memory>

#include "platform/status.h"
#include "simulator/simulated_board.h"
#include "terminal/command_line.h"

namespace terminal {

class SimulatedPort {
 public:
  /// Plugs the command line's chip in.
  explicit SimulatedPort(const CommandLine& line);

  PortIo& Io() { return board_->cable; }

  /// Switches the faults of the command line on; fails for one that there is not.
  Status SwitchFaultsOn();

  /// The flash file: the cells of all banks. One that is not there stands for an erased chip.
  Status LoadFlash();
  Status SaveFlash() const;

 private:
  const CommandLine& line_;
  std::unique_ptr<simulator::SimulatedBoard> board_;
};

}  // namespace terminal
