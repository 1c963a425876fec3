#include "soak/verdict.h"

#include <algorithm>
#include <vector>

#include "image/cells.h"
#include "image/crc16.h"
#include "rtd2120/crc8.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

/// Null when no VSK chip is plugged in.
const simulator::VskDataSheet* SheetOf(const simulator::SimulatedBoard& board) {
  const auto sheet = std::ranges::find(simulator::kVskDataSheets, board.Connected(),
                                       &simulator::VskDataSheet::chip);
  return sheet == simulator::kVskDataSheets.end() ? nullptr : &*sheet;
}

/// The cells of the chip's bank where the image should be; short when the chip has no such bank.
Bytes FlashOf(simulator::SimulatedBoard& board, int bank, std::size_t size) {
  const simulator::SimulatedChip* chip = board.Chip();
  if (chip == nullptr || bank >= chip->Banks()) return {};
  const auto& cells = chip->Bank(bank).Cells();
  return {cells.begin(), cells.begin() + static_cast<std::ptrdiff_t>(std::min(size, cells.size()))};
}

/// The same where a chip puts it whose pages have another size than the `sent` bytes of a frame.
Bytes PagesOf(simulator::SimulatedBoard& board, int bank, std::size_t size, std::size_t sent) {
  const simulator::VskDataSheet* sheet = SheetOf(board);
  if (sheet == nullptr) return {};
  const Bytes cells = FlashOf(board, bank, sheet->flashBytes);
  Bytes pages;
  for (std::size_t a = 0; a < size; ++a) {
    const std::size_t at = a / sent * sheet->pageBytes + a % sent;
    if (at < cells.size()) pages.push_back(cells[at]);
  }
  return pages;
}

}  // namespace

bool ImageFits(const Tool& tool, const simulator::SimulatedBoard& board) {
  const simulator::VskDataSheet* sheet = SheetOf(board);
  if (!tool.vskImages.CodeLoaded || sheet == nullptr) return false;
  std::uint16_t crc = tongxun::kCrcStart;
  for (const VskBank& bank : tool.isp.Model().banks) {
    const std::int32_t maximum = tool.vskImages.*bank.maximum;
    if (maximum >= static_cast<std::int32_t>(sheet->flashBytes)) return false;
    crc = tongxun::CrcBytes(crc, tongxun::UsedCells(tool.vskImages.*bank.cells, maximum));
  }
  return crc == tool.vskImages.CodeCrc;  // else it was loaded for another chip
}

void JudgeWriteOk(Tool& tool, simulator::SimulatedBoard& board, Tally& tally) {
  ++tally.claims;
  Bytes wanted, flash, pages;
  const auto append = [](Bytes& all, std::span<const std::uint8_t> more) {
    all.insert(all.end(), more.begin(), more.end());
  };
  const auto pageBytes = static_cast<std::size_t>(tool.isp.Model().pageBytes);
  int bank = 0;
  for (const VskBank& row : tool.isp.Model().banks) {
    const auto image = tongxun::UsedCells(tool.vskImages.*row.cells, tool.vskImages.*row.maximum);
    append(wanted, image);
    append(flash, FlashOf(board, bank, image.size()));
    append(pages, PagesOf(board, bank++, image.size(), pageBytes));
  }
  if (wanted == flash) return;
  if (tongxun::CrcBytes(tongxun::kCrcStart, flash) == tool.vskImages.CodeCrc) {
    ++tally.equalCrc;
  } else if (wanted == pages) {
    ++tally.otherPages;
  } else {
    ++(tool.vskImages.CodeCrc == 0 ? tally.crcZero : tally.unexplained);
  }
}

void JudgeCrcOk(int bank, Tool& tool, simulator::SimulatedBoard& board, const CrcRange& range,
                Tally& tally) {
  ++tally.claims;
  const auto image = tool.rtdImages.Of(static_cast<tongxun2120::Bank>(bank));
  const auto used = tongxun::UsedCells(image.cells, image.maximum);
  const Bytes wanted(used.begin(), used.end());
  const Bytes flash = FlashOf(board, bank, wanted.size());
  if (wanted == flash) return;
  const simulator::SimulatedChip* chip = board.Chip();
  const bool otherRange = chip == &board.rtd2120 && !range.Covers(0, wanted.size() - 1) &&
                          range.CrcOf(chip->Bank(bank).Cells()) == tongxun2120::Crc8(wanted);
  if (flash.size() == wanted.size() && tongxun2120::Crc8(wanted) == tongxun2120::Crc8(flash)) {
    ++tally.equalCrc;
  } else if (tongxun2120::Crc8(wanted) == 0) {
    ++tally.crcZero;
  } else {
    ++(otherRange ? tally.otherRange : tally.unexplained);
  }
}
