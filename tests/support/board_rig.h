// A simulated board, and the bus that reaches it: what the rigs of both chip families stand on.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "bus/bus_timing.h"
#include "bus/iic_port.h"
#include "bus/isp_boards.h"
#include "simulator/bus_log.h"
#include "simulator/simulated_board.h"
#include "support/fake_ticks.h"

/// The shipped simulated cable with chosen polarities.
inline IspBoard Wiring(bool sdaOut = false, bool sdaIn = true, bool sclOut = false) {
  IspBoard wiring = simulator::CableWiring();
  wiring.SdaOut.polarity = sdaOut;
  wiring.SdaIn.polarity = sdaIn;
  wiring.SclOut.polarity = sclOut;
  return wiring;
}

struct BoardRig {
  BoardRig(const IspBoard& wiring, const simulator::VskIdentity& identity,
           simulator::ConnectedChip chip)
      : board(wiring, identity) {
    board.Connect(chip);
    board.wire.ListenTo(&log);
    boards.BoardTable[0] = wiring;
    port.InitPortShadows();
  }

  std::vector<std::string> TakeFrames() {
    std::vector<std::string> lines = log.Lines();
    log.Clear();
    return lines;
  }

  FakeTicks ticks{4};
  simulator::SimulatedBoard board;
  simulator::FrameLog log;
  IspBoards boards;
  IicPort port{board.cable, boards, {}};
  tongxun::BusTiming timing{ticks};
};
