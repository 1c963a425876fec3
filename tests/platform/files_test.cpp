#include "platform/files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/directories.h"
#include "support/temp_folder.h"

namespace {

using testing::ElementsAre;

struct Files : testing::Test {
  TempFolder folder;

  std::string Write(const char* name, const std::string& text) {
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    return WriteAtStart(folder / name, bytes).Reason();
  }
};

TEST_F(Files, WritingAtTheStartKeepsWhatFollows) {
  folder.Write("a", "12345");
  EXPECT_EQ(Write("a", "xy"), "");
  EXPECT_EQ(folder.Read("a"), "xy345");
  EXPECT_EQ(*ReadFile(folder / "a", 3), "xy3");
  EXPECT_EQ(Write("new/b", "z"), "");
  EXPECT_EQ(folder.Read("new/b"), "z");
  EXPECT_NE(Write("new", "z"), "") << "a folder";
  EXPECT_THAT(folder.Names(), testing::UnorderedElementsAre("a", "new"));
}

TEST_F(Files, ThatCannotBeReplacedKeepTheirContent) {
  folder.Write("a", "old");
  folder.Write("a.part/in the way", "");  // nothing can be written beside it
  EXPECT_NE(Write("a", "newer"), "");
  EXPECT_EQ(folder.Read("a"), "old");
  EXPECT_EQ(Write("a", "new"), "") << "it need not grow";
  EXPECT_EQ(folder.Read("a"), "new");
}

TEST_F(Files, OfTheProgramFolderAreAddedWhereMissingAndKept) {
  std::vector<std::string> told;
  const auto tell = [&told](const std::string& text) { told.push_back(text); };
  const Directories pc{folder / "operator", {}, folder / "delivered"};
  folder.Write("delivered/Initial/InitPort.csv", "newer table");
  folder.Write("delivered/Initial/CurrIspBoard.csv", "0");
  folder.Write("delivered/samples/chip/image.hex", ":00");
  folder.Write("operator/Initial/InitPort.csv", "table with my board");
  FillProgramFolder(pc, tell);
  EXPECT_EQ(folder.Read("operator/Initial/InitPort.csv"), "table with my board");
  EXPECT_EQ(folder.Read("operator/Initial/CurrIspBoard.csv"), "0");
  EXPECT_EQ(folder.Read("operator/samples/chip/image.hex"), ":00");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / "operator/Initial"), {}), 2);
  EXPECT_THAT(told, ElementsAre());

  const std::filesystem::path blocked = folder.Write("file", "no folder");
  for (const auto& delivered : {folder / "delivered", std::filesystem::path()}) {
    FillProgramFolder({blocked, {}, delivered}, tell);
    EXPECT_THAT(told, ElementsAre(testing::HasSubstr(PathText(blocked / "Initial") +
                                                     " (Not a directory)")));
    told.clear();
  }
}

}  // namespace
