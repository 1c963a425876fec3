// "Initial/InitPort.csv".
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "bus/isp_boards.h"
#include "fuzz.h"
#include "simple_parsers.h"

namespace {

struct Table {
  std::array<IspBoard, 21> rows;
  int count = 0;
};

/// Deals the fields out into the table; ends at the first that is missing or cannot be read.
void Parse(const std::vector<std::string>& fields, Table& table) {
  auto field = fields.begin();
  const auto left = [&] { return fields.end() - field; };
  while (left() > 0) {
    if (left() < 2) return;
    const auto count = simple::Decimal(field[1]);
    if (!count) return;
    table.count = *count;
    field += 2;
    for (int row = 0; row < *count; ++row) {
      if (row > 20 || left() == 0) return;
      IspBoard& board = table.rows[static_cast<std::size_t>(row)];
      board.name = *field++;
      for (LineSpec* line : {&board.SdaOut, &board.SdaIn, &board.SclOut, &board.SclIn}) {
        const auto address = left() < 2 ? std::nullopt : simple::WholeHex(field[1]);
        if (!address) return;
        line->address = static_cast<std::int32_t>(*address);
        if (left() < 4) return;
        line->polarity = field[3] != "-";
        if (left() < 6) return;
        line->mask = static_cast<std::int16_t>(simple::Mask(field[5]));
        field += 6;
      }
    }
  }
}

bool Same(const LineSpec& one, const LineSpec& other) {
  return one.address == other.address && one.polarity == other.polarity && one.mask == other.mask;
}

bool Same(const IspBoard& one, const IspBoard& other) {
  return one.name == other.name && Same(one.SdaOut, other.SdaOut) && Same(one.SdaIn, other.SdaIn) &&
         Same(one.SclOut, other.SclOut) && Same(one.SclIn, other.SclIn);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile file("InitPort.csv");
  const std::string text = TextOf(data, size);
  file.Write(text);
  IspBoards boards;
  boards.LoadPortConfig(file.Path(), [] {});

  Table expected;
  Parse(simple::Fields(text), expected);
  Require(boards.BoardCount == expected.count, "the row count as the plain reading has it");
  for (std::size_t row = 0; row < expected.rows.size(); ++row) {
    const IspBoard& board = boards.BoardTable[row];
    Require(Same(board, expected.rows[row]), "every row as the plain reading has it");
    for (const LineSpec* line : {&board.SdaOut, &board.SdaIn, &board.SclOut, &board.SclIn}) {
      Require(line->mask >= 0 && line->mask <= 255, "a mask is within 0..255");
    }
  }
  return 0;
}
