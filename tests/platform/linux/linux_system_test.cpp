#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

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

TEST(LinuxDirectories, ThePortAddressStandsInTheConfigFolder) {
  setenv("XDG_CONFIG_HOME", "/xdg", 1);
  EXPECT_EQ(SystemDirectories("isp-writer").portAddressFolder, "/xdg/isp-writer");
  unsetenv("XDG_CONFIG_HOME");
  setenv("HOME", "/home/operator", 1);
  EXPECT_EQ(SystemDirectories("isp-writer").portAddressFolder, "/home/operator/.config/isp-writer");
}
