#include "bus/port_config.h"

#include <array>
#include <optional>
#include <string>

#include "bus/csv_fields.h"
#include "platform/directories.h"
#include "platform/files.h"

namespace {

constexpr std::size_t kLargestConfigFile = 1 << 20;  // bytes; a full board table has under 4 KiB

/// label, address, label, polarity mark, label, mask
bool ReadLine(CsvFields& fields, LineSpec& line) {
  fields.Next();
  const auto address = fields.Next();
  const auto addressValue = address ? WholeHex(*address) : std::nullopt;
  if (!addressValue) return false;
  line.address = *addressValue;

  fields.Next();
  const auto polarityMark = fields.Next();
  if (!polarityMark) return false;
  line.polarity = *polarityMark != "-";

  fields.Next();
  const auto mask = fields.Next();
  if (!mask) return false;
  line.mask = LeadingMask(*mask);
  return true;
}

bool ReadBoard(CsvFields& fields, IspBoard& board) {
  const auto name = fields.Next();
  if (!name) return false;
  board.name = *name;
  return ReadLine(fields, board.SdaOut) && ReadLine(fields, board.SdaIn) &&
         ReadLine(fields, board.SclOut) && ReadLine(fields, board.SclIn);
}

}  // namespace

PortConfig::PortConfig(IicPort& port, const std::filesystem::path& portAddressFolder)
    : port_(port),
      addressFile_(std::filesystem::path(CutAtNul(portAddressFolder.string())) / "chipport.log") {}

void PortConfig::LoadPortConfig(const std::filesystem::path& path, const Turn& turn) {
  const FileContent file = ReadFile(path, kLargestConfigFile);
  CsvFields fields(file.bytes);
  while (!fields.AtEnd()) {
    turn();
    fields.Next();
    const auto countField = fields.Next();
    const auto count = countField ? LeadingDecimal(*countField) : std::nullopt;
    if (!count) return;
    BoardCount = *count;
    for (int row = 0; row < BoardCount; ++row) {
      if (row >= IicPort::kBoards) return;
      if (!ReadBoard(fields, port_.BoardTable[static_cast<std::size_t>(row)])) return;
    }
  }
}

void PortConfig::LoadCurrentBoard(const std::filesystem::path& path, const Turn& turn) {
  const FileContent file = ReadFile(path, kLargestConfigFile);
  CsvFields fields(file.bytes);
  while (!fields.AtEnd()) {
    turn();
    const auto board = LeadingDecimal(*fields.Next());
    if (!board) return;
    if (*board >= 0 && *board < IicPort::kBoards) port_.CurrentBoard = *board;
  }
}

void PortConfig::LoadPortAddress() {
  const FileContent file = ReadFile(addressFile_, 2);
  const auto byteAt = [&](std::size_t i) {
    return i < file.bytes.size() ? static_cast<std::uint8_t>(file.bytes[i]) : 0;
  };
  port_.PortBase = byteAt(0) * 256 + byteAt(1);
  if (port_.PortBase != 0) return;
  port_.PortBase = IicPort::kDefaultPortBase;
  SavePortAddress();
}

void PortConfig::SavePortAddress() const {
  const std::array bytes{static_cast<std::uint8_t>(port_.PortBase / 256),
                         static_cast<std::uint8_t>(port_.PortBase % 256)};
  WriteAtStart(addressFile_, bytes);
}
