#include "bus/isp_boards.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>

#include "bus/port_address_file.h"
#include "platform/files.h"
#include "support/recording_port.h"
#include "support/temp_folder.h"

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

std::string Group(const std::string& address, const std::string& mark, const std::string& mask) {
  return ",a," + address + ",p," + mark + ",m," + mask;
}

std::string Row(const std::string& name, const std::string& mask = "80") {
  return name + Group("378", "+", mask) + Group("379", " - ", "40") + Group("37A", "-", "08") +
         Group("0", "", "zz") + "\n";
}

TEST_F(BoardFilesTest, ReadsTheBoardTable) {
  LoadTable("Count , 2\r\n\"One, two\"" + Row("").substr(0) + Row("second", "1"));
  EXPECT_EQ(boards.BoardCount, 2);
  const IspBoard& board = boards.BoardTable[0];
  EXPECT_EQ(board.name, "One, two");
  EXPECT_EQ(board.SdaOut.address, 0x378);
  EXPECT_TRUE(board.SdaOut.polarity);
  EXPECT_EQ(board.SdaOut.mask, 0x80);
  EXPECT_FALSE(board.SdaIn.polarity) << "a minus sign between blanks";
  EXPECT_EQ(board.SdaIn.mask, 0x40);
  EXPECT_FALSE(board.SclOut.polarity);
  EXPECT_EQ(board.SclOut.mask, 0x08);
  EXPECT_TRUE(board.SclIn.polarity) << "an empty mark is direct";
  EXPECT_EQ(board.SclIn.mask, 0) << "no digit";
  EXPECT_EQ(boards.BoardTable[1].name, "second");
  EXPECT_EQ(turns, 1) << "one turn of the message loop a block";
}

TEST_F(BoardFilesTest, AnErrorEndsTheLoadAndKeepsWhatWasRead) {
  std::string rows;
  for (int i = 0; i < 22; ++i) rows += Row("b" + std::to_string(i));
  LoadTable("n,22\n" + rows);
  EXPECT_EQ(boards.BoardTable[20].name, "b20");

  LoadTable("n,3\n" + Row("x0") + "x1,a,37G," + Row("x2"));
  EXPECT_EQ(boards.BoardTable[0].name, "x0");
  EXPECT_EQ(boards.BoardTable[1].name, "x1");
  EXPECT_EQ(boards.BoardTable[2].name, "b2") << "an address that is no number ends the load";

  LoadTable("n,2\n" + Row("y0") + "y1,a");
  EXPECT_EQ(boards.BoardTable[1].name, "y1");
  EXPECT_EQ(boards.BoardTable[1].SdaOut.mask, 0x80) << "cut off: the old mask stays";

  boards.LoadPortConfig(folder / "none", turn);
  boards.LoadPortConfig(folder.Path(), turn);
  EXPECT_EQ(boards.BoardTable[0].name, "y0");
}

TEST_F(BoardFilesTest, LaterBlocksAndMasksOutOfRange) {
  LoadTable("n,1\n" + Row("first", "1FF") + "n,-3\nn,1\n" + Row("later", "0"));
  EXPECT_EQ(boards.BoardTable[0].name, "later");
  EXPECT_EQ(boards.BoardTable[0].SdaOut.mask, 0);
  LoadTable("n,1\n" + Row("wide", "100"));
  EXPECT_EQ(boards.BoardTable[0].SdaOut.mask, 0);
}

TEST_F(BoardFilesTest, TheLastFieldInRangeIsTheCurrentBoard) {
  struct Case {
    const char* text;
    int board;
  };
  for (const Case& c : {Case{"3,1\n", 1},
                        {"CurrentBoard,2\r\n", 2},
                        {"21", 0},
                        {"-1", 0},
                        {"4.5", 4},
                        {"7,99999,8", 7},
                        {"5,x", 0},
                        {"20", 20}}) {
    boards.CurrentBoard = 0;
    LoadBoard(c.text);
    EXPECT_EQ(boards.CurrentBoard, c.board) << c.text;
  }
}

TEST_F(BoardFilesTest, TheAddressFile) {
  struct Case {
    const char* what;
    std::string before;
    int base;
    std::string after;
  };
  const Case cases[] = {
      {"two bytes", "\x02\x78", 0x278, "\x02\x78"},
      {"above 0x7FFF", std::string("\xEC\0", 2), 0xEC00, std::string("\xEC\0", 2)},
      {"below 0x100", std::string("\0\x78", 2), 0x78, std::string("\0\x78", 2)},
      {"empty", "", 0x378, "\x03\x78"},
      {"zero, with bytes behind", std::string("\0\0rest", 6), 0x378, "\x03\x78rest"},
  };
  for (const Case& c : cases) {
    folder.Write("cfg/chipport.log", c.before);
    address.LoadPortAddress();
    EXPECT_EQ(port.PortBase, c.base) << c.what;
    EXPECT_EQ(folder.Read("cfg/chipport.log"), c.after) << c.what;
  }
  std::filesystem::remove_all(folder / "cfg");
  address.LoadPortAddress();
  EXPECT_EQ(folder.Read("cfg/chipport.log"), "\x03\x78") << "missing: created";
  port.PortBase = 0xABCD;
  EXPECT_TRUE(address.SavePortAddress());
  EXPECT_EQ(folder.Read("cfg/chipport.log"), "\xAB\xCD");
}

TEST_F(BoardFilesTest, AnAddressThatCannotBeSavedStaysForTheRun) {
  folder.Write("cfg", "a file where the folder should be");
  port.PortBase = 0x278;
  EXPECT_FALSE(address.SavePortAddress());
  EXPECT_THAT(address.UnsavedNotice(),
              testing::AllOf(testing::StartsWith("It could not be saved in " +
                                                 PathText(folder / "cfg" / "chipport.log") + " ("),
                             testing::EndsWith(") and holds for this run only.")));
  EXPECT_EQ(address.UnsavedNotice(), "") << "told once";
  EXPECT_EQ(port.PortBase, 0x278);
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
