#include "image/readers.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "support/file_answers.h"
#include "support/temp_folder.h"

namespace {

using loadfile::FileKind;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string kEnd = ":00000001FF\r\n";
const std::string kData = ":0300100001020300\r\n";
const std::string kRefusal = "message path or file name error!!!";

struct ReadersTest : testing::Test {
  TempFolder folder;
  std::vector<std::uint8_t> cells = std::vector<std::uint8_t>(65537);
  std::int32_t maximum = 0;
  FileAnswers<FileView> view;

  bool Read(FileKind kind, const std::string& name) {
    return loadfile::ReadImage(name, kind, {cells, maximum}, view);
  }
  bool Hex(const std::string& text) { return Read(FileKind::Hex, folder.Write("f.hex", text)); }
  bool Binary(const std::string& bytes) { return Read(FileKind::Binary, folder.Write("f", bytes)); }
};

TEST_F(ReadersTest, TheNamesEndingTellsTheKind) {
  EXPECT_EQ(loadfile::KindOf("CODE.HEX", "HEX"), FileKind::Hex);
  EXPECT_EQ(loadfile::KindOf("x.Hex", "HEX"), FileKind::Hex);
  EXPECT_EQ(loadfile::KindOf("code.txt", "HEX"), FileKind::Binary);
  EXPECT_EQ(loadfile::KindOf("", "HEX"), FileKind::Binary);
}

// What files hold then is compared with plain readings in fuzzing/binary.cpp and fuzzing/hex.cpp.
TEST_F(ReadersTest, BinaryFilesUpToTheLastCell) {
  for (const std::size_t size : {65535U, 65536U, 70000U}) {
    cells[65535] = cells[65536] = 0x55;
    EXPECT_TRUE(Binary(std::string(size, 'x')));
    EXPECT_EQ(maximum, std::min<std::int32_t>(static_cast<std::int32_t>(size), 65536) - 1);
    EXPECT_EQ(cells[65535], size == 65535 ? 0xFF : 'x');
    EXPECT_EQ(cells[65536], 0x55);
  }
}

TEST_F(ReadersTest, WhatCannotBeReadChangesNothingAndSaysWhy) {
  const std::string second = ":03001300040506EA";
  const std::string advice = "for example with unix2dos";
  const std::string feeds = "the file's lines end with a line feed only|" + advice;
  struct Case {
    std::string text;
    std::string reasons;  // parts of the detail
  };
  const Case cases[] = {
      {kData + ":03001000ab0203EE\r\n" + kEnd,
       "line 2, column 10: found \"a\", expected a digit 0-9 or A-F (upper case)"},
      {":03 01000010203EA\r\n" + kEnd, "line 1, column 4: found a blank"},
      {":0300100001020300\n:00000001FF\n", "line 1, column 18: " + feeds},
      {":0300100001020300\n", feeds},
      {":0300100001020300\n:0300130004050aEA\n:00000001FF\n", feeds + "|upper case"},
      {":030010000102aa00\n:00000001FF\n", "line 1, column 14: found \"a\"|upper case|" + feeds},
      {":0300100001020300\r:00000001FF\r",
       "line 1, column 18: the file's lines end with a carriage return only|"
       "for example with mac2unix and then unix2dos"},
      {kData + second + " \r\n" + kData + kEnd,
       "line 2, column 18: found a blank, expected the line to end"},
      {kData + second + "\r\r\n" + kData + kEnd,
       "line 2, column 19: found a carriage return, expected the line to end"},
      {kData + second + "\n" + kData + kEnd, "line 2, column 18: the line ends"},
      {kData + "\r\n" + second + "\r\n" + kEnd, "line 2, column 1: the line is empty"},
      {"\xEF\xBB\xBF" + kData + kEnd,
       "line 1, column 1: found a byte-order mark|must begin with \":\""},
      {"\t" + kData + kEnd, "line 1, column 1: found a tab|must begin with \":\""},
      {":0300100001", "the file ends inside a record"},
      {":", "the file ends inside a record"},
      {kData + ":0300100001020300", "line 2, column 18"},
      {":03FFFF00010203FF\r\n" + kEnd, "reaches address 0x10001"},
      {std::string(40, '\0'), "the character 0x00"},
  };
  cells.assign(cells.size(), 0x55);
  maximum = 7;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.reasons);
    EXPECT_FALSE(Hex(c.text));
    EXPECT_THAT(view.Take(), ElementsAre("beep", "beep", kRefusal));
    std::istringstream reasons(c.reasons);
    for (std::string reason; std::getline(reasons, reason, '|');) {
      EXPECT_THAT(view.lastDetail, HasSubstr(reason));
    }
    EXPECT_THAT(view.lastDetail, testing::Not(HasSubstr("found \":\"")));
    EXPECT_EQ(maximum, 7);
    EXPECT_EQ(std::count(cells.begin(), cells.end(), 0x55), std::ssize(cells));
  }
  for (const auto& [path, reason] :
       {std::pair{folder / "none", "the file does not exist"}, {folder.Path(), "folder"}}) {
    for (const FileKind kind : {FileKind::Hex, FileKind::Binary}) {
      EXPECT_FALSE(Read(kind, path.string()));
      EXPECT_THAT(view.Take(), ElementsAre("beep", "beep", kRefusal));
      EXPECT_THAT(view.lastDetail, HasSubstr(reason));
      EXPECT_EQ(maximum, 7);
    }
  }
}

}  // namespace
