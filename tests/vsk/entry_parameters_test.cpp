#include "vsk/entry_parameters.h"

#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace {

struct EntryParametersTest : testing::Test {
  TempFolder folder;
  std::array<std::int16_t, 11> params{};

  void Read(const std::string& bytes) {
    fileop::ReadSecurityFile(folder.Write("security.cod", bytes), params);
  }
};

TEST_F(EntryParametersTest, ReadsUpToElevenBytesAndEndsThemWithZero) {
  params.fill(77);
  Read("\x94\x02\x5A\xA5");
  EXPECT_EQ(params, (std::array<std::int16_t, 11>{0x94, 2, 0x5A, 0xA5, 0, 77, 77, 77, 77, 77, 77}));
  Read(std::string(200, '\xFE'));
  EXPECT_EQ(params[10], 0xFE);
  Read("");
  EXPECT_EQ(params[0], 0);
  EXPECT_EQ(params[1], 0xFE);
  fileop::ReadSecurityFile(folder / "Initial/new.cod", params);
  EXPECT_TRUE(std::filesystem::exists(folder / "Initial/new.cod")) << "created empty";
}

TEST_F(EntryParametersTest, TheSecurityCheck) {
  const std::string byteMessage = "please input two word HEX number:(00-FF)";
  const std::string countMessage = "please input two word HEX number:(01-04)";
  struct Case {
    fileop::SecurityEntry entry;
    bool accepted;
    std::string message;
    std::string file;
  };
  const Case cases[] = {
      {{"94", "01", {"5a", "", "", ""}}, true, "", std::string("\x94\x01\x5A\0", 4)},
      {{" 94 ", "02", {"5A", "A5", "zz", ""}}, true, "", "\x94\x02\x5A\xA5"},
      {{"94", "03", {"01", "02", "03", ""}}, true, "", "\x94\x03\x01\x02\x03"},
      {{"94", "04", {"01", "02", "03", "04"}}, true, "", "\x94\x04\x01\x02\x03\x04"},
      {{"", "01", {"5A", "", "", ""}}, false, "", ""},
      {{"9", "05", {"5A", "", "", ""}}, false, byteMessage, ""},
      {{"9G", "01", {"5A", "", "", ""}}, false, "", ""},
      {{"94", "", {"5A", "", "", ""}}, false, "", ""},
      {{"94", "1", {"5A", "", "", ""}}, false, countMessage, ""},
      {{"94", "0x", {"5A", "", "", ""}}, false, "", ""},
      {{"94", "05", {"5A", "", "", ""}}, false, countMessage, ""},
      {{"94", "00", {"5A", "", "", ""}}, false, countMessage, ""},
      {{"94", "02", {"5A", "", "", ""}}, false, "", ""},
      {{"94", "02", {"5A", "123", "", ""}}, false, byteMessage, ""},
      {{"94", "02", {"5A", "G1", "", ""}}, false, "", ""},
      {{"\u00E9", "01", {"5A", "", "", ""}}, false, byteMessage, ""},
  };
  for (const Case& c : cases) {
    const auto path = folder / "security.cod";
    folder.Write("security.cod", "");
    const auto check = fileop::CheckSecurityEntry(c.entry, path);
    const std::string what = c.entry.address + " " + c.entry.count + " " + c.entry.codes[1];
    EXPECT_EQ(check.accepted, c.accepted) << what;
    EXPECT_EQ(check.message, c.message) << what;
    EXPECT_EQ(std::filesystem::exists(path), c.accepted) << what;
    EXPECT_EQ(folder.Read("security.cod"), c.file) << what;
  }
}

TEST_F(EntryParametersTest, AFileThatCannotBeWrittenStaysAsItIs) {
  const auto path = folder.Write("security.cod", "abc");
  std::filesystem::create_directory(folder / "security.cod.part");
  const auto check = fileop::CheckSecurityEntry({"94", "01", {"5A", "", "", ""}}, path);
  EXPECT_FALSE(check.accepted);
  EXPECT_EQ(check.message.find("the entry parameters could not be written to " + path + ": "), 0U);
  EXPECT_EQ(folder.Read("security.cod"), "abc");
}

TEST_F(EntryParametersTest, AnExistingFileIsOverwrittenButNotCut) {
  const auto path = folder.Write("security.cod", "abcdefgh");
  EXPECT_TRUE(fileop::CheckSecurityEntry({"94", "01", {"5A", "", "", ""}}, path).accepted);
  EXPECT_EQ(folder.Read("security.cod"), std::string("\x94\x01\x5A\0efgh", 8));
}

}  // namespace
