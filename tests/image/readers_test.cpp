#include "image/readers.h"

#include <algorithm>
#include <filesystem>

#include "support/file_answers.h"
#include "support/has_parts.h"
#include "support/temp_folder.h"

namespace {

using loadfile::kBinary;
using loadfile::kHex;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string kEnd = ":00000001FF\r\n";
const std::string kData = ":0300100001020300\r\n";
const std::string kRefusal = "message path or file name error!!!";

struct ReadersTest : testing::Test {
  TempFolder folder;
  std::vector<std::uint8_t> cells = std::vector<std::uint8_t>(65537);
  std::int32_t maximum = 0;
  FileAnswers<> view;

  bool Read(const loadfile::Format& format, const std::string& name) {
    return loadfile::ReadImage(name, format, {cells, maximum}, view).Ok();
  }
  bool Hex(const std::string& text) { return Read(kHex, folder.Write("f.hex", text)); }
  bool Binary(const std::string& bytes) { return Read(kBinary, folder.Write("f", bytes)); }
};

TEST_F(ReadersTest, TheNamesEndingTellsTheFormat) {
  const auto isHex = [](const char* name, loadfile::Formats formats = loadfile::kOneFileFormats) {
    return &loadfile::FormatOf(name, formats) == &kHex;
  };
  EXPECT_TRUE(isHex("CODE.HEX") && isHex("x.Hex") && isHex("x.h00", loadfile::kPairFormats));
  EXPECT_FALSE(isHex("code.txt") || isHex("") || isHex("x.hex", loadfile::kPairFormats));
}

// What files hold then is compared with plain readings in fuzzing/binary.cpp and fuzzing/hex.cpp.
TEST_F(ReadersTest, BinaryFilesUpToTheLastCell) {
  for (const std::size_t size : {65535U, 65536U, 70000U}) {
    cells[65535] = cells[65536] = 0x55;
    view.notes.clear();
    EXPECT_TRUE(Binary(std::string(size, 'x')));
    EXPECT_EQ(view.notes.find("the first 65536 bytes") != std::string::npos, size > 65536);
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
      {kData + ":0100050077", "the file ends inside a record"},
      {kData + ":01000500A\x01\r\n", "line 2, column 12: the file ends|of \":01000500A.\""},
      {kData + "\r\n;00000001FF", "line 2, column 1: the line is empty"},
      {kData + ";00000001FF\r\n", "line 2, column 1: found \";\" at the beginning of a record"},
      {kData + "\x1A:0", "line 2, column 1: found the character 0x1A at the beginning"},
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
    EXPECT_THAT(view.lastDetail, HasParts(c.reasons));
    EXPECT_THAT(view.lastDetail, testing::Not(HasSubstr("found \":\"")));
    EXPECT_EQ(maximum, 7);
    EXPECT_EQ(std::count(cells.begin(), cells.end(), 0x55), std::ssize(cells));
  }
  for (const auto& [path, reason] :
       {std::pair{folder / "none", "the file does not exist"}, {folder.Path(), "folder"}}) {
    for (const auto* format : {&kHex, &kBinary}) {
      EXPECT_FALSE(Read(*format, path.string()));
      EXPECT_THAT(view.Take(), ElementsAre("beep", "beep", kRefusal));
      EXPECT_THAT(view.lastDetail, HasSubstr(reason));
      EXPECT_EQ(maximum, 7);
    }
  }
}

TEST_F(ReadersTest, WhatMayStandBehindTheLastRecord) {
  for (const char* rest : {"", "\r\n", " \t\n", "\x1A", "\r\n\x1A\x1A", ":00001201ed\r\n",
                           ":00000001FF\r\n\x1A", ":00000001FF\r\n\r\n\r\n"}) {
    EXPECT_TRUE(Hex(kData + rest)) << rest;
    EXPECT_EQ(maximum, 0x12) << rest;
  }
}

TEST_F(ReadersTest, AHexFileIsNeverCut) {
  const std::string name = folder.Write("f.hex", kData);
  std::filesystem::resize_file(name, (64U << 20) + 1);
  EXPECT_FALSE(Read(kHex, name));
  EXPECT_THAT(view.lastDetail, HasSubstr("f.hex: the file is too large"));
}

TEST_F(ReadersTest, WhatAMakerHardlyMeantIsTold) {
  const std::pair<std::string, std::string> rows[] = {
      // a file, parts of what is told
      {kData + ":03002000010203D7\r\n:0300230001020399\r\n" + kEnd,
       "- 2 lines with a wrong checksum, the first is line 1. The file is damaged"},
      {":020000040001F9\r\n:03000000010203F7\r\n:020000021000EC\r\n:03000300010203F4\r\n" + kEnd,
       "- 2 lines with an extended address|Stored as data at 0000, and all addresses are folded"},
      {":03000000010203F7\r\n:0400000500000000F7\r\n" + kEnd,
       "- 1 line of another type than data|: line 2. Stored as data at 0000: make the file "
       "without"},
      {":03000000010203F7\r\n:0100030007F5\r\n:02000200AA55FD\r\n" + kEnd,
       "- 1 line with data where data of an earlier line stands: line 3."},
  };
  for (const auto& [text, words] : rows) {
    EXPECT_TRUE(Hex(text));
    EXPECT_THAT(view.notes, HasParts("\n" + (folder / "f.hex").string() + "|" + words));
  }
  view.notes.clear();
  for (const char* sample : {"vsk830/thermostat.hex", "vsk630/kiosk.H00", "vsk630/kiosk.H01",
                             "rtd2120/panel-bank1.hex", "rtd2120/panel-bank2.hex"}) {
    EXPECT_TRUE(Read(kHex, std::string(SOURCE_FOLDER "/samples/") + sample));
    EXPECT_EQ(view.notes, "") << sample;
  }
}

TEST_F(ReadersTest, AFileThatHoldsSomethingElseHasChanged) {
  const std::string name = folder.Write("f", "abc");
  const loadfile::LoadedFile loaded = loadfile::ImageFile(name, kBinary, 2).Taken().file;
  EXPECT_FALSE(loadfile::HasChanged(loaded));
  folder.Write("f", "abc");
  EXPECT_FALSE(loadfile::HasChanged(loaded)) << "written anew";
  for (const char* other : {"abd", "", "abcd"}) {
    folder.Write("f", other);
    EXPECT_TRUE(loadfile::HasChanged(loaded)) << other;
  }
  std::filesystem::remove(name);
  EXPECT_FALSE(loadfile::HasChanged(loaded)) << "a stick that was pulled";
}

}  // namespace
