#include "bus/isp_boards.h"

#include <gtest/gtest.h>

#include <bit>

#include "bus/port_address_file.h"
#include "platform/files.h"
#include "support/line_trace.h"
#include "support/temp_folder.h"
#include "text/hex_text.h"

namespace {

struct BoardFilesTest : testing::Test {
  TempFolder folder;
  LineTrace io;
  IspBoards boards;
  IicPort port{io, boards, {}};
  PortAddressFile address{port, folder / "cfg"};
  int turns = 0;
  IspBoards::Turn turn = [this] { ++turns; };

  void LoadTable(const std::string& text) {
    boards.LoadPortConfig(folder.Write("InitPort.csv", text), turn);
  }
  void LoadBoard(const std::string& text) {
    boards.LoadCurrentBoard(folder.Write("CurrIspBoard.csv", text), turn);
  }
};

std::string Row(const std::string& name, const std::string& mask = "80") {
  return name + ",a,378,p,+,m," + mask + ",a,379,p, - ,m,40,a,37A,p,-,m,08,a,0,p,,m,zz\n";
}

/// Name, then address, polarity and mask of each line.
std::string Shown(const IspBoard& board) {
  std::string text = board.name;
  for (const LineSpec& line : {board.SdaOut, board.SdaIn, board.SclOut, board.SclIn}) {
    text += " " + HexText(line.address) + (line.polarity ? "+" : "-") + HexText(line.mask);
  }
  return text;
}

TEST_F(BoardFilesTest, ReadsTheBoardTable) {
  LoadTable("Count , 2\r\n\"One, two\"" + Row("") + Row("second", "1"));
  EXPECT_EQ(boards.BoardCount, 2);
  EXPECT_EQ(Shown(boards.BoardTable[0]), "One, two 378+80 379-40 37A-8 0+0")
      << "a minus sign between blanks; an empty mark is direct";
  EXPECT_EQ(Shown(boards.BoardTable[1]), "second 378+1 379-40 37A-8 0+0");
  EXPECT_EQ(turns, 1) << "one turn of the message loop a block";

  LoadTable("n,1\n" + Row("first", "1FF") + "n,-3\nn,1\n" + Row("later", "0"));
  EXPECT_EQ(Shown(boards.BoardTable[0]), "later 378+0 379-40 37A-8 0+0");
  LoadTable("n,1\n" + Row("wide", "100"));
  EXPECT_EQ(boards.BoardTable[0].SdaOut.mask, 0);
}

TEST_F(BoardFilesTest, AnErrorEndsTheLoadAndKeepsWhatWasRead) {
  std::string rows;
  for (int i = 0; i < 22; ++i) rows += Row("b" + std::to_string(i));
  LoadTable("n,22\n" + rows);
  EXPECT_EQ(boards.BoardTable[20].name, "b20");
  const auto names = [&rows = boards.BoardTable] {
    return rows[0].name + " " + rows[1].name + " " + rows[2].name;
  };
  LoadTable("n,3\n" + Row("x0") + "x1,a,37G," + Row("x2"));
  EXPECT_EQ(names(), "x0 x1 b2") << "an address that is no number ends the load";
  LoadTable("n,2\n" + Row("y0") + "y1,a");
  boards.LoadPortConfig(folder / "none", turn);
  boards.LoadPortConfig(folder.Path(), turn);
  EXPECT_EQ(names(), "y0 y1 b2");
  EXPECT_EQ(boards.BoardTable[1].SdaOut.mask, 0x80) << "cut off: the old mask stays";
}

TEST_F(BoardFilesTest, TheLastFieldInRangeIsTheCurrentBoard) {
  const std::pair<const char*, int> rows[] = {
      {"3,1\n", 1}, {"CurrentBoard,2\r\n", 2}, {"21", 0},  {"-1", 0},       {"4.5", 4}, {"3.5", 4},
      {"5,x", 0},   {"7,99999,8", 7},          {"20", 20}, {"nan,inf,5", 5}};
  for (const auto& [text, board] : rows) {
    boards.CurrentBoard = 0;
    LoadBoard(text);
    EXPECT_EQ(boards.CurrentBoard, board) << text;
  }
}

TEST_F(BoardFilesTest, TheAddressFile) {
  using namespace std::string_literals;
  const std::tuple<std::string, int, std::string> rows[] = {{"\x02\x78", 0x278, "\x02\x78"},
                                                            {"\xEC\0"s, 0xEC00, "\xEC\0"s},
                                                            {"\0\x78"s, 0x78, "\0\x78"s},
                                                            {"", 0x378, "\x03\x78"},
                                                            {"\0\0rest"s, 0x378, "\x03\x78rest"}};
  for (const auto& [before, base, after] : rows) {
    folder.Write("cfg/chipport.log", before);
    address.LoadPortAddress();
    EXPECT_EQ(port.PortBase, base);
    EXPECT_EQ(folder.Read("cfg/chipport.log"), after);
  }
  std::filesystem::remove_all(folder / "cfg");
  address.LoadPortAddress();
  EXPECT_EQ(folder.Read("cfg/chipport.log"), "\x03\x78") << "missing: created";
  port.PortBase = 0xABCD;
  EXPECT_TRUE(address.SavePortAddress());
  EXPECT_EQ(folder.Read("cfg/chipport.log"), "\xAB\xCD");

  std::filesystem::remove_all(folder / "cfg");
  folder.Write("cfg", "a file where the folder should be");
  EXPECT_FALSE(address.SavePortAddress());
  const std::string file = PathText(folder / "cfg" / "chipport.log");
  const std::string notice = address.UnsavedNotice();
  EXPECT_TRUE(notice.starts_with("It could not be saved in " + file + " (")) << notice;
  EXPECT_TRUE(notice.ends_with(") and holds for this run only.")) << notice;
  EXPECT_EQ(address.UnsavedNotice(), "") << "told once";
  EXPECT_EQ(port.PortBase, 0xABCD);
  address.LoadPortAddress();
  EXPECT_EQ(port.PortBase, 0x378);
}

/// The rows that ship use only the bits that a parallel port has.
TEST_F(BoardFilesTest, ShippedBoards) {
  const std::filesystem::path initial = std::filesystem::path(SOURCE_FOLDER) / "Initial";
  boards.LoadPortConfig(initial / "InitPort.csv", turn);
  boards.LoadCurrentBoard(initial / "CurrIspBoard.csv", turn);
  ASSERT_GE(boards.BoardCount, 3);
  EXPECT_LT(boards.CurrentBoard, boards.BoardCount);
  for (int i = 0; i < boards.BoardCount; ++i) {
    const IspBoard& board = boards.BoardTable[static_cast<std::size_t>(i)];
    EXPECT_FALSE(board.name.empty());
    EXPECT_TRUE(board.Complete());
    for (const auto& [mask, available] : {std::pair{board.SdaOut.mask, 0xFF},
                                          {board.SdaIn.mask, 0xF8},
                                          {board.SclOut.mask, 0x0F},
                                          {board.SclIn.mask, 0xF8}}) {
      EXPECT_EQ(std::popcount(static_cast<unsigned>(mask)), 1) << board.name;
      EXPECT_EQ(mask & available, mask) << board.name;
    }
  }
}

}  // namespace
