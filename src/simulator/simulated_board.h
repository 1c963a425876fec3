// A target board on the simulated ISP cable: the cable, the wire and the chip that is plugged in.
#pragma once

#include <deque>
#include <vector>

#include "bus/isp_boards.h"
#include "simulator/cable.h"
#include "simulator/chip_models.h"
#include "simulator/faults.h"
#include "simulator/rtd2120_chip.h"
#include "simulator/simulated_vsk.h"
#include "simulator/wire_decoder.h"

namespace simulator {

class SimulatedBoard {
 public:
  /// `wiring`: how the cable's bits carry the lines.
  explicit SimulatedBoard(const IspBoard& wiring, const VskIdentity& vskIdentity = {});
  SimulatedBoard(const SimulatedBoard&) = delete;
  SimulatedBoard& operator=(const SimulatedBoard&) = delete;

  /// Plugs a chip in, without power before: it is not in ISP mode. Flash contents stay.
  void Connect(ConnectedChip chip);
  ConnectedChip Connected() const { return connected_; }
  /// The chip that is plugged in; null when there is none.
  SimulatedChip* Chip();

  /// Takes the power away and gives it back: the chip is as after power-up, and no longer busy for
  /// ever or holding SDA low. The other faults and the flash stay.
  void PowerCycle();

  /// What the operator may plug in.
  struct Choice {
    ConnectedChip chip;
    const char* name;
  };
  static std::vector<Choice> Choices();

  Faults faults;
  std::deque<SimulatedVsk> vskChips;  // one a row of `kVskDataSheets`
  SimulatedVsk& vsk830 = vskChips[0];
  SimulatedVsk& vsk630 = vskChips[1];
  Rtd2120Chip rtd2120;

  WireDecoder wire;
  Cable cable;

 private:
  ConnectedChip connected_ = ConnectedChip::None;
};

/// The wiring of the cable that the simulator program comes with: SDA out on data bit 7 through an
/// inverter, SDA in on status bit 7 (set while SDA is low), SCL out on control bit 3 through an
/// inverter. Its own "Initial" folder describes the same cable.
IspBoard CableWiring();

}  // namespace simulator
