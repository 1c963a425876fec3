#include "bus/isp_boards.h"

#include <gtest/gtest.h>

#include <bit>

#include "bus/port_address_file.h"
#include "platform/files.h"
#include "support/line_trace.h"
#include "support/temp_folder.h"

namespace {

/// What is read from these files is compared with a plain reading in fuzzing/ too.
struct BoardFilesTest : testing::Test {
  TempFolder folder;
  LineTrace io;
  IspBoards boards;
  IicPort port{io, boards, {}};
  PortAddressFile address{port, folder / std::string("cfg\0junk", 8)};  // up to the NUL
  int turns = 0;
  IspBoards::Turn turn = [this] { ++turns; };
};

TEST_F(BoardFilesTest, AnAddressThatIsNoNumberEndsTheLoad) {
  boards.LoadPortConfig(folder.Write("t.csv", "n,2\nx0,a,37G,p,+,m,80,a,379,p,-,m,40\n"), turn);
  EXPECT_EQ(boards.BoardTable[0].name, "x0");
  EXPECT_EQ(boards.BoardTable[0].SclOut.address, 0);
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

/// The rows that ship use only the bits that a parallel port has, and stay when a table is missing.
TEST_F(BoardFilesTest, ShippedBoards) {
  const std::filesystem::path initial = std::filesystem::path(SOURCE_FOLDER) / "Initial";
  boards.LoadPortConfig(initial / "InitPort.csv", turn);
  boards.LoadCurrentBoard(initial / "CurrIspBoard.csv", turn);
  EXPECT_EQ(turns, 3) << "one turn of the message loop a block of the table, and a field";
  for (const auto& none : {folder / "none", folder.Path()}) boards.LoadPortConfig(none, turn);
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
