#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "platform/directories.h"
#include "platform/files.h"
#include "platform/tick_counter.h"

TEST(LinuxFiles, DevicesAreNotRead) {
  EXPECT_EQ(ReadFile("/dev/zero", 9).problem, "the file cannot be read: it is not a regular file");
}

TEST(LinuxTickCounter, AdvancesInStepsOf64ToTheSecond) {
  const auto ticks = SystemTickCounter();
  const std::uint32_t begin = ticks->GetTickCount();
  std::uint32_t next = begin;
  while (next == begin) next = ticks->GetTickCount();
  const std::uint32_t first = next;
  while (next == first) next = ticks->GetTickCount();
  const std::uint32_t step = next - first;
  // A thread that was not running in between sees several steps at once.
  EXPECT_GE(step, 15U);
  const double steps = std::round(step / 15.625);
  EXPECT_LT(std::abs(step - steps * 15.625), 1) << "a whole number of steps, but for the rounding";
}

TEST(LinuxDirectories, AnInstalledProgramHasItsFoldersWithTheOperator) {
  setenv("XDG_CONFIG_HOME", "/xdg", 1);
  setenv("XDG_DATA_HOME", "/data", 1);
  EXPECT_EQ(SystemDirectories("isp-writer").portAddressFolder, "/xdg/isp-writer");
  EXPECT_EQ(SystemDirectories("isp-writer").programFolder, "/data/isp-writer");
  setenv("XDG_STATE_HOME", "/state", 1);
  EXPECT_EQ(SystemDirectories("isp-writer").stateFolder, "/state/isp-writer");
  unsetenv("XDG_STATE_HOME");

  unsetenv("XDG_CONFIG_HOME");
  setenv("XDG_DATA_HOME", "no/absolute/path", 1);
  setenv("HOME", "/home/operator", 1);
  const Directories home = SystemDirectories("isp-writer");
  EXPECT_EQ(home.portAddressFolder, "/home/operator/.config/isp-writer");
  EXPECT_EQ(home.programFolder, "/home/operator/.local/share/isp-writer");
  EXPECT_EQ(home.stateFolder, "/home/operator/.local/state/isp-writer");
  const auto program = std::filesystem::read_symlink("/proc/self/exe");
  EXPECT_EQ(home.deliveredFolder, program.parent_path().parent_path() / "share/isp-writer");
}
