#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <filesystem>

#include "platform/directories.h"
#include "platform/files.h"
#include "platform/tick_counter.h"

namespace fs = std::filesystem;

TEST(WindowsDirectories, AreTheProgramsFolderAndTheWindowsFolderInLowerCase) {
  const Directories found = SystemDirectories("any");
  EXPECT_TRUE(found.programFolder.is_absolute()) << found.programFolder;
  EXPECT_TRUE(fs::is_regular_file(found.programFolder / "platform_test.exe"));
  const std::string folder = found.settingsFolder.string();
  EXPECT_TRUE(fs::equivalent(folder, std::getenv("SystemRoot"))) << folder;
  EXPECT_EQ(folder.find_first_of(std::string("ABCDEFGHIJKLMNOPQRSTUVWXYZ", 27)), std::string::npos)
      << folder << ": the buffer was not cut, or a capital letter is left";
}

TEST(WindowsTickCounter, GivesTheSystemsValuesAsTheyAre) {
  const auto ticks = SystemTickCounter();
  // Between two readings of the system's own, by unsigned differences: right across the wrap.
  for (int i = 0; i < 1000; ++i) {
    const std::uint32_t before = ::GetTickCount();
    const std::uint32_t reading = ticks->GetTickCount();
    const std::uint32_t after = ::GetTickCount();
    EXPECT_LE(reading - before, after - before);
  }
}

TEST(WindowsFiles, DevicesAreNotRead) {
  for (const char* device : {"NUL", "CON", "COM1", "LPT1", "C:\\CON"}) {
    const Result<std::string> content = ReadFile(device, 9);
    EXPECT_TRUE(!content.Ok() && content->empty()) << device;
  }
}
