#include "platform/directories.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/files.h"
#include "support/temp_folder.h"

namespace {

struct Installation {
  TempFolder folder;
  Directories directories{.programFolder = folder / "operator",
                          .portAddressFolder = {},
                          .deliveredFolder = folder / "delivered"};
  std::vector<std::string> reports;

  void Start() {
    FillProgramFolder(directories, [this](const std::string& text) { reports.push_back(text); });
  }
};

}  // namespace

TEST(ProgramFolder, GetsWhatIsMissingAndKeepsWhatIsThere) {
  Installation pc;
  pc.folder.Write("delivered/Initial/InitPort.csv", "table");
  pc.folder.Write("delivered/Initial/CurrIspBoard.csv", "0");
  pc.folder.Write("delivered/samples/chip/image.hex", ":00");
  pc.Start();
  EXPECT_EQ(pc.folder.Read("operator/Initial/InitPort.csv"), "table");
  EXPECT_EQ(pc.folder.Read("operator/samples/chip/image.hex"), ":00");

  pc.folder.Write("operator/Initial/InitPort.csv", "table with my board");
  pc.folder.Write("delivered/Initial/InitPort.csv", "newer table");
  std::filesystem::remove(pc.folder / "operator/Initial/CurrIspBoard.csv");
  pc.Start();
  EXPECT_EQ(pc.folder.Read("operator/Initial/InitPort.csv"), "table with my board");
  EXPECT_EQ(pc.folder.Read("operator/Initial/CurrIspBoard.csv"), "0");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(pc.folder / "operator/Initial"), {}),
            2);
  EXPECT_THAT(pc.reports, testing::IsEmpty());
}

TEST(ProgramFolder, IsNamedWhenItCannotBeWritten) {
  Installation pc;
  const std::string blocked = pc.folder.Write("file", "no folder");
  for (const bool installed : {true, false}) {
    pc.reports.clear();
    if (installed) pc.folder.Write("delivered/Initial/InitPort.csv", "table");
    pc.directories.programFolder = blocked;
    if (!installed) pc.directories.deliveredFolder.clear();
    pc.Start();
    EXPECT_THAT(pc.reports, testing::ElementsAre(testing::HasSubstr(
                                PathText(PathOf(blocked) / "Initial") + " (Not a directory)")));
  }
}
