#include "platform/files.h"

#include <gtest/gtest.h>

#include <array>

#include "platform/directories.h"
#include "support/temp_folder.h"

TEST(Files, SayWhyTheyCannotBeRead) {
  const TempFolder folder;
  EXPECT_EQ(ReadFile(folder / "none", 9).problem, "the file does not exist");
  EXPECT_TRUE(ReadFile(folder / "none", 9).missing);
  EXPECT_EQ(ReadFile(folder.Path(), 9).problem, "it is a folder, not a file");
}

TEST(Files, WritingAtTheStartKeepsWhatFollows) {
  const TempFolder folder;
  folder.Write("a", "12345");
  EXPECT_TRUE(WriteAtStart(folder / "a", std::array<std::uint8_t, 2>{'x', 'y'}));
  EXPECT_EQ(folder.Read("a"), "xy345");
  EXPECT_EQ(ReadFile(folder / "a", 3).bytes, "xy3");

  EXPECT_TRUE(WriteAtStart(folder / "new/b", std::array<std::uint8_t, 1>{'z'}));
  EXPECT_EQ(folder.Read("new/b"), "z");
  EXPECT_FALSE(WriteAtStart(folder / "new", std::array<std::uint8_t, 1>{'z'}));
}

TEST(Files, NamesMayHoldAnyLetter) {
  const std::string name = "Prüfung 測試";
  EXPECT_EQ(PathOf(name).u16string(), u"Prüfung 測試");
  EXPECT_EQ(PathText(PathOf(name)), name);
  const TempFolder folder;
  EXPECT_TRUE(WriteAtStart(folder.Path() / PathOf(name), std::array<std::uint8_t, 1>{'z'}));
  EXPECT_EQ(ReadFile(PathOf(PathText(folder.Path()) + "/" + name), 9).bytes, "z");
}

TEST(Directories, CutAtNul) {
  EXPECT_EQ(CutAtNul(std::string("C:\\Win\0junk", 11)), "C:\\Win");
  EXPECT_EQ(CutAtNul("plain"), "plain");
}
