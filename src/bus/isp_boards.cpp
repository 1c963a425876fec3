#include "bus/isp_boards.h"

#include <optional>

#include "platform/files.h"
#include "text/csv_fields.h"
#include "text/hex_text.h"

namespace {

constexpr std::size_t kLargestConfigFile = 1 << 20;  // bytes; a full board table has under 4 KiB

/// label, address, label, polarity mark, label, mask
bool ReadLine(CsvFields& fields, LineSpec& line) {
  fields.Next();
  const auto address = fields.Next();
  const auto addressValue = address ? WholeHex(*address) : std::nullopt;
  if (!addressValue) return false;
  line.address = static_cast<std::int32_t>(*addressValue);

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

void IspBoards::LoadPortConfig(const std::filesystem::path& path, const Turn& turn) {
  tableFile_ = path;
  const Result<std::string> file = ReadFile(path, kLargestConfigFile);
  CsvFields fields(*file);
  while (!fields.AtEnd()) {
    turn();
    fields.Next();
    const auto countField = fields.Next();
    const auto count = countField ? LeadingDecimal(*countField) : std::nullopt;
    if (!count) return;
    BoardCount = *count;
    for (int row = 0; row < BoardCount; ++row) {
      if (row >= kBoards) return;
      if (!ReadBoard(fields, BoardTable[static_cast<std::size_t>(row)])) return;
    }
  }
}

void IspBoards::LoadCurrentBoard(const std::filesystem::path& path, const Turn& turn) {
  currentBoardFile_ = path;
  const Result<std::string> file = ReadFile(path, kLargestConfigFile);
  CsvFields fields(*file);
  while (!fields.AtEnd()) {
    turn();
    const auto board = LeadingDecimal(*fields.Next());
    if (!board) return;
    if (*board >= 0 && *board < kBoards) CurrentBoard = *board;
  }
}

std::size_t IspBoards::NamedRows() const {
  std::size_t rows = BoardTable.size();
  while (rows > 0 && BoardTable[rows - 1].name.empty()) --rows;
  return rows;
}

std::string IspBoards::MissingWiring() const {
  return "ISP board number " + std::to_string(CurrentBoard) +
         " is in use, and the board table has no complete row for it, so nothing can answer. "
         "Mend the board table, " +
         PathText(tableFile_) + ", or the number of the board in use, " +
         PathText(currentBoardFile_) + ", and start the program again.";
}
