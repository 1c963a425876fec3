#include "simulator/simulated_board.h"

namespace simulator {
namespace {

std::deque<SimulatedVsk> AllVskChips(const VskIdentity& identity, const Faults& faults) {
  std::deque<SimulatedVsk> chips;
  for (const VskDataSheet& sheet : kVskDataSheets) chips.emplace_back(identity, sheet, faults);
  return chips;
}

}  // namespace

SimulatedBoard::SimulatedBoard(const IspBoard& wiring, const VskIdentity& vskIdentity)
    : vskChips(AllVskChips(vskIdentity, faults)),
      rtd2120(faults),
      wire(faults),
      cable(wiring, faults, wire) {}

SimulatedChip* SimulatedBoard::Chip() {
  if (connected_ == ConnectedChip::Rtd2120) return &rtd2120;
  for (std::size_t row = 0; row < kVskDataSheets.size(); ++row) {
    if (kVskDataSheets[row].chip == connected_) return &vskChips[row];
  }
  return nullptr;
}

std::vector<SimulatedBoard::Choice> SimulatedBoard::Choices() {
  std::vector<Choice> choices{{ConnectedChip::None, "nothing"}};
  for (const VskDataSheet& sheet : kVskDataSheets) choices.push_back({sheet.chip, sheet.name});
  choices.push_back({ConnectedChip::Rtd2120, "RTD2120"});
  return choices;
}

void SimulatedBoard::Connect(ConnectedChip chip) {
  connected_ = chip;
  wire.Connect(Chip());
}

void SimulatedBoard::PowerCycle() {
  faults.busyForEver = false;
  faults.sdaStuckLow = false;
  Connect(connected_);
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
