#include "soak/verdict.h"

#include <QStringList>
#include <algorithm>
#include <vector>

#include "image/cells.h"
#include "image/crc16.h"
#include "rtd2120/crc8.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

/// The cells of the chip's bank where the image should be; short when the chip has no such bank.
Bytes FlashOf(simulator::SimulatedBoard& board, int bank, std::size_t size) {
  const simulator::SimulatedChip* chip = board.Chip();
  if (chip == nullptr || bank >= chip->Banks()) return {};
  const auto& cells = chip->Bank(bank).Cells();
  return {cells.begin(), cells.begin() + static_cast<std::ptrdiff_t>(std::min(size, cells.size()))};
}

std::uint8_t Crc8(const Bytes& bytes) {
  std::uint8_t crc = 0;
  for (const std::uint8_t byte : bytes) crc = tongxun2120::Crc8Byte(crc, byte);
  return crc;
}

void JudgeBank(int bank, Tool& tool, simulator::SimulatedBoard& board, const CrcRange& range,
               Tally& tally) {
  ++tally.claims;
  const auto image = tool.rtdImages.Of(static_cast<tongxun2120::Bank>(bank));
  const auto used = tongxun::UsedCells(image.cells, image.maximum);
  const Bytes wanted(used.begin(), used.end());
  const Bytes flash = FlashOf(board, bank, wanted.size());
  if (wanted == flash) return;
  const simulator::SimulatedChip* chip = board.Chip();
  const bool otherRange = chip == &board.rtd2120 && !range.Covers(0, wanted.size() - 1) &&
                          range.CrcOf(chip->Bank(bank).Cells()) == Crc8(wanted);
  if (flash.size() == wanted.size() && Crc8(wanted) == Crc8(flash)) {
    ++tally.equalCrc;
  } else if (Crc8(wanted) == 0) {
    ++tally.crcZero;
  } else {
    ++(otherRange ? tally.otherRange : tally.unexplained);
  }
}

}  // namespace

bool ImageFits(const Tool& tool) {
  if (!tool.vskImages.CodeLoaded) return false;
  std::uint16_t crc = tongxun::kCrcStart;
  for (const VskBank& bank : tool.isp.Model().banks) {
    const std::int32_t maximum = tool.vskImages.*bank.maximum;
    if (maximum > 0xFFFF) return false;
    crc = tongxun::CrcBytes(crc, tongxun::UsedCells(tool.vskImages.*bank.cells, maximum));
  }
  return crc == tool.vskImages.CodeCrc;  // else it was loaded for another chip
}

void JudgeWriteOk(Tool& tool, simulator::SimulatedBoard& board, Tally& tally) {
  ++tally.claims;
  Bytes wanted, flash;
  int bank = 0;
  for (const VskBank& row : tool.isp.Model().banks) {
    const auto image = tongxun::UsedCells(tool.vskImages.*row.cells, tool.vskImages.*row.maximum);
    const Bytes there = FlashOf(board, bank++, image.size());
    wanted.insert(wanted.end(), image.begin(), image.end());
    flash.insert(flash.end(), there.begin(), there.end());
  }
  if (wanted == flash) return;
  if (tongxun::CrcBytes(tongxun::kCrcStart, flash) == tool.vskImages.CodeCrc) {
    ++tally.equalCrc;
  } else {
    ++(tool.vskImages.CodeCrc == 0 ? tally.crcZero : tally.unexplained);
  }
}

void JudgeCrcOk(const QString& status, Tool& tool, simulator::SimulatedBoard& board,
                const CrcRange& range, Tally& tally) {
  int bank = 0;
  for (const QString& line : status.split('\n')) {
    if (line.startsWith("Program BANK")) bank = line.startsWith("Program BANK 2") ? 1 : 0;
    if (line == "CRC OK.") JudgeBank(bank, tool, board, range, tally);
  }
}
