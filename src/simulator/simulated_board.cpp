#include "simulator/simulated_board.h"

namespace simulator {

SimulatedBoard::SimulatedBoard(const IspBoard& wiring, std::uint32_t portBase,
                               const VskIdentity& vskIdentity)
    : vsk830(vskIdentity, 1, faults),
      vsk630(vskIdentity, 2, faults),
      rtd2120(faults),
      wire(faults),
      cable(wiring, portBase, faults, wire) {}

SimulatedChip* SimulatedBoard::Chip() {
  switch (connected_) {
    case ConnectedChip::Vsk830:
      return &vsk830;
    case ConnectedChip::Vsk630:
      return &vsk630;
    case ConnectedChip::Rtd2120:
      return &rtd2120;
    case ConnectedChip::None:
      break;
  }
  return nullptr;
}

void SimulatedBoard::Connect(ConnectedChip chip) {
  connected_ = chip;
  wire.Connect(Chip());
}

IspBoard CableWiring() {
  IspBoard wiring;
  wiring.name = "Simulated cable";
  wiring.SdaOut = {.address = 0x378, .polarity = false, .mask = 0x80};
  wiring.SdaIn = {.address = 0x379, .polarity = true, .mask = 0x80};
  wiring.SclOut = {.address = 0x37A, .polarity = false, .mask = 0x08};
  return wiring;
}

}  // namespace simulator
