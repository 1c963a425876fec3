// "Initial/CurrIspBoard.csv".
#include <string>

#include "bus/isp_boards.h"
#include "fuzz.h"
#include "simple_parsers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile file("CurrIspBoard.csv");
  const std::string text = TextOf(data, size);
  file.Write(text);
  IspBoards boards;
  boards.CurrentBoard = 7;
  boards.LoadCurrentBoard(file.Path(), [] {});

  int expected = 7;
  for (const std::string& field : simple::Fields(text)) {
    const auto board = simple::Decimal(field);
    if (!board) break;
    if (*board >= 0 && *board <= 20) expected = *board;
  }
  Require(boards.CurrentBoard >= 0 && boards.CurrentBoard <= 20, "the board is one of the table's");
  Require(boards.CurrentBoard == expected, "the last board that the plain reading finds");
  return 0;
}
