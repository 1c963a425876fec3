#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <filesystem>

#include "platform/directories.h"
#include "platform/files.h"
#include "platform/tick_counter.h"

namespace fs = std::filesystem;

TEST(WindowsDirectories, ProgramFolderIsWhereTheProgramStands) {
  const fs::path program = SystemDirectories("any").programFolder;
  EXPECT_TRUE(program.is_absolute()) << program;
  EXPECT_TRUE(fs::is_regular_file(program / "platform_test.exe")) << program;
}

TEST(WindowsDirectories, PortAddressStandsInTheWindowsFolderInLowerCase) {
  const char* windows = std::getenv("SystemRoot");
  ASSERT_NE(windows, nullptr);
  const std::string folder = SystemDirectories("any").portAddressFolder.string();
  EXPECT_TRUE(fs::equivalent(folder, windows)) << folder;
  EXPECT_EQ(folder.find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ"), std::string::npos) << folder;
  EXPECT_EQ(folder.find('\0'), std::string::npos) << "the buffer was not cut";
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
    const FileContent content = ReadFile(device, 9);
    EXPECT_FALSE(content.Ok()) << device;
    EXPECT_EQ(content.bytes, "") << device;
  }
}
