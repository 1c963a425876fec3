#include "terminal/simulated_port.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "text/hex_text.h"

namespace terminal {
namespace {

using simulator::Faults;
using simulator::SimulatedBoard;

using Numbers = std::array<std::uint32_t, 3>;

constexpr std::uint32_t kUsualBank = 0xFFFFFFFF;  // the chip's first

/// The captions of the "Simulated board" window, with its first numbers.
struct NamedFault {
  std::string_view name;  // upper case, blanks as "-"
  std::size_t numbers;    // that may stand behind it
  Numbers usual;
  void (*switchOn)(SimulatedBoard& board, const Numbers& numbers);
};

constexpr std::array<NamedFault, 5> kFaults{{
    {"UNPLUGGED",
     1,
     {0},
     [](SimulatedBoard& board, const Numbers& n) { board.faults.unpluggedAfterFrame = n[0]; }},
    {"BUSY-FOR-EVER",
     0,
     {},
     [](SimulatedBoard& board, const Numbers&) { board.faults.busyForEver = true; }},
    {"SDA-STUCK-LOW",
     0,
     {},
     [](SimulatedBoard& board, const Numbers&) { board.faults.sdaStuckLow = true; }},
    {"BYTE-REFUSED",
     2,
     {0, 1},
     [](SimulatedBoard& board, const Numbers& n) {
       board.faults.refusedByte = Faults::RefusedByte{n[1], n[0]};
     }},
    {"FLASH-BIT-FLIPPED",
     3,
     {0, kUsualBank, 0},
     [](SimulatedBoard& board, const Numbers& n) {
       const auto first = static_cast<std::uint32_t>(board.Chip()->FirstBankNumber());
       const auto bank = static_cast<int>((n[1] == kUsualBank ? first : n[1]) - first);
       board.faults.flippedBit = Faults::FlippedBit{bank, n[2], static_cast<int>(n[0])};
     }},
}};

/// "NAME", or "NAME:1,2": decimal numbers, but for an address, which is the third and hexadecimal.
std::optional<Numbers> NumbersOf(std::string_view text, const NamedFault& fault) {
  Numbers numbers = fault.usual;
  for (std::size_t i = 0; !text.empty(); ++i) {
    if (i == fault.numbers) return std::nullopt;
    const std::string_view field = text.substr(0, text.find(','));
    const auto number = i == 2 ? WholeHex(field) : WholeDecimal(field);
    if (!number) return std::nullopt;
    numbers[i] = *number;
    text.remove_prefix(std::min(field.size() + 1, text.size()));
  }
  return numbers;
}

std::string Names() {
  std::vector<std::string> names;
  names.reserve(kFaults.size());
  for (const NamedFault& fault : kFaults) names.push_back(LowerCase(fault.name));
  return Joined(names);
}

simulator::ConnectedChip ChipNamed(const std::string& name) {
  for (const auto& choice : SimulatedBoard::Choices()) {
    if (UpperCase(name) == choice.name) return choice.chip;
  }
  return simulator::ConnectedChip::None;
}

}  // namespace

SimulatedPort::SimulatedPort(const CommandLine& line)
    : line_(line), board_(std::make_unique<SimulatedBoard>(simulator::CableWiring())) {
  board_->Connect(ChipNamed(line.chip));
}

Status SimulatedPort::SwitchFaultsOn() {
  for (const std::string& asked : line_.faults) {
    std::string name = UpperCase(asked.substr(0, asked.find(':')));
    std::replace(name.begin(), name.end(), ' ', '-');
    const auto fault = std::ranges::find(kFaults, name, &NamedFault::name);
    if (fault == kFaults.end()) {
      return Status::Failed("--fault " + asked + ": unknown. Known are " + Names());
    }
    const std::size_t colon = asked.find(':');
    const auto numbers = NumbersOf(
        colon == std::string::npos ? std::string_view() : std::string_view(asked).substr(colon + 1),
        *fault);
    if (!numbers) {
      return Status::Failed(
          "--fault " + asked + ": at most " + std::to_string(fault->numbers) +
          " numbers may follow the name, as in flash-bit-flipped:BIT,BANK,ADDRESS");
    }
    fault->switchOn(*board_, *numbers);
  }
  const auto& flipped = board_->faults.flippedBit;
  const bool outside =
      flipped &&
      (flipped->bank < 0 || flipped->bank >= board_->Chip()->Banks() || flipped->bit < 0 ||
       flipped->bit > 7 || flipped->address >= board_->Chip()->Bank(flipped->bank).Cells().size());
  if (outside) {
    return Status::Failed("--fault flash-bit-flipped: the chip has no such bit, bank or address");
  }
  return {};
}

Status SimulatedPort::LoadFlash() {
  if (line_.flash.empty()) return {};
  simulator::SimulatedChip& chip = *board_->Chip();
  const std::size_t bankBytes = chip.Bank(0).Cells().size();
  const std::size_t bytes = bankBytes * static_cast<std::size_t>(chip.Banks());
  auto file = ReadFile(PathOf(line_.flash), bytes + 1);
  if (file.IsMissing()) return {};
  if (!file.Ok()) return file;
  if (file->size() != bytes) {
    return Status::Failed("it does not hold the " + std::to_string(bytes) +
                          " bytes of this chip's flash");
  }
  const std::vector<std::uint8_t> cells(file->begin(), file->end());
  for (int bank = 0; bank < chip.Banks(); ++bank) {
    const auto first = bankBytes * static_cast<std::size_t>(bank);
    chip.Bank(bank).Restore(std::span(cells).subspan(first, bankBytes));
  }
  return {};
}

Status SimulatedPort::SaveFlash() const {
  if (line_.flash.empty()) return {};
  std::string cells;
  for (int bank = 0; bank < board_->Chip()->Banks(); ++bank) {
    const auto& content = board_->Chip()->Bank(bank).Cells();
    cells.append(content.begin(), content.end());
  }
  return ReplaceFile(PathOf(line_.flash), cells);
}

}  // namespace terminal
