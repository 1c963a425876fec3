#include "platform/files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "platform/directories.h"
#include "support/temp_folder.h"

TEST(Files, SayWhyTheyCannotBeRead) {
  const TempFolder folder;
  EXPECT_EQ(ReadFile(folder / "none", 9).problem, "the file does not exist");
  EXPECT_TRUE(ReadFile(folder / "none", 9).missing);
  EXPECT_EQ(ReadFile(folder.Path(), 9).problem, "it is a folder, not a file");
}

std::string WriteText(const std::filesystem::path& path, const std::string& text) {
  return WriteAtStart(path, std::vector<std::uint8_t>(text.begin(), text.end()));
}

TEST(Files, WritingAtTheStartKeepsWhatFollows) {
  const TempFolder folder;
  folder.Write("a", "12345");
  EXPECT_EQ(WriteText(folder / "a", "xy"), "");
  EXPECT_EQ(folder.Read("a"), "xy345");
  EXPECT_EQ(ReadFile(folder / "a", 3).bytes, "xy3");

  EXPECT_EQ(WriteText(folder / "new/b", "z"), "");
  EXPECT_EQ(folder.Read("new/b"), "z");
  EXPECT_NE(WriteText(folder / "new", "z"), "") << "a folder";
  EXPECT_THAT(folder.Names(), testing::UnorderedElementsAre("a", "new"));
}

TEST(Files, ThatCannotBeReplacedKeepTheirContent) {
  const TempFolder folder;
  folder.Write("a", "old");
  std::filesystem::create_directory(folder / "a.part");  // nothing can be written beside it
  EXPECT_NE(WriteText(folder / "a", "newer"), "");
  EXPECT_EQ(folder.Read("a"), "old");
  EXPECT_EQ(WriteText(folder / "a", "new"), "") << "it need not grow";
  EXPECT_EQ(folder.Read("a"), "new");
}

TEST(Directories, CutAtNul) {
  EXPECT_EQ(CutAtNul(std::string("C:\\Win\0junk", 11)), "C:\\Win");
  EXPECT_EQ(CutAtNul("plain"), "plain");
}
