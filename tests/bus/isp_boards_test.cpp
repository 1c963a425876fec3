#include "bus/isp_boards.h"

#include <gtest/gtest.h>

#include <bit>

#include "bus/port_address_file.h"
#include "platform/files.h"
#include "support/line_trace.h"
#include "support/temp_folder.h"
#include "text/hex_text.h"

namespace {

/// What is read from these files is compared with a plain reading in fuzzing/ too.
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

TEST_F(BoardFilesTest, AnErrorEndsTheLoadAndKeepsWhatWasRead) {
  LoadTable("Count , 2\r\n\"One, two\"" + Row("") + Row("second", "1"));
  EXPECT_EQ(boards.BoardCount, 2);
  EXPECT_EQ(Shown(boards.BoardTable[0]), "One, two 378+80 379-40 37A-8 0+0")
      << "a minus sign between blanks; an empty mark is direct";
  EXPECT_EQ(Shown(boards.BoardTable[1]), "second 378+1 379-40 37A-8 0+0");
  EXPECT_EQ(turns, 1) << "one turn of the message loop a block";

  LoadTable("n,3\n" + Row("x0") + "x1,a,37G," + Row("x2"));
  EXPECT_EQ(boards.BoardTable[1].name, "x1") << "an address that is no number ends the load";
  LoadTable("n,2\n" + Row("y0") + "y1,a");
  boards.LoadPortConfig(folder / "none", turn);
  boards.LoadPortConfig(folder.Path(), turn);
  EXPECT_EQ(Shown(boards.BoardTable[1]), "y1 378+1 379-40 37A-8 0+0") << "the old lines stay";
  EXPECT_EQ(boards.BoardTable[2].name, "");
}

TEST_F(BoardFilesTest, TheAddressFile) {
  address.LoadPortAddress();
  EXPECT_EQ(folder.Read("cfg/chipport.log"), "\x03\x78") << "missing: created";
  port.PortBase = 0xABCD;
  EXPECT_TRUE(address.SavePortAddress().Ok());
  EXPECT_EQ(folder.Read("cfg/chipport.log"), "\xAB\xCD");

  std::filesystem::remove_all(folder / "cfg");
  folder.Write("cfg", "a file where the folder should be");
  const std::string file = PathText(folder / "cfg" / "chipport.log");
  EXPECT_EQ(address.SavePortAddress().Reason(),
            "It could not be saved in " + file + " (Not a directory) and holds for this run only.");
  const Status again = address.SavePortAddress();
  EXPECT_FALSE(again.Ok());
  EXPECT_EQ(again.Reason(), "") << "told once";
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
