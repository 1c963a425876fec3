// The running kernel, as far as a machine without a parallel port has it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/ppdev.h>
#include <sys/ioctl.h>
#include <sys/time.h>

#include <cerrno>

#include "platform/linux/port_system.h"
#include "support/temp_folder.h"

TEST(LinuxPortSystem, FailuresAreNegativeErrorNumbers) {
  const TempFolder folder;
  const auto system = LinuxPortSystem();
  EXPECT_EQ(system->Open(folder / "none"), -ENOENT);
  EXPECT_EQ(system->Ioctl(-1, PPCLAIM, nullptr), -EBADF);
  EXPECT_EQ(system->IoctlWithin(-1, PPCLAIM, 1000), -EBADF);
  itimerval left{};
  getitimer(ITIMER_REAL, &left);
  EXPECT_EQ(left.it_value.tv_sec + left.it_value.tv_usec, 0) << "the timer of the call goes on";
  EXPECT_LT(system->IoPerm(0xFFFF, 3, true), 0);  // beyond the last I/O port

  const int null = system->Open("/dev/null");
  ASSERT_GE(null, 0);
  EXPECT_EQ(system->Ioctl(null, PPCLAIM, nullptr), -ENOTTY);
  system->Close(null);
  EXPECT_EQ(system->Ioctl(null, PPCLAIM, nullptr), -EBADF);
}

TEST(LinuxPortSystem, ReadsTextsWhoseLengthIsUnknownBeforehand) {
  const auto system = LinuxPortSystem();
  EXPECT_EQ(system->ReadText("/proc/sys/kernel/ostype"), "Linux\n");
  EXPECT_EQ(system->ReadText("/proc/sys/kernel/no such file"), "");
  EXPECT_EQ(system->ReadText("/proc/sys/kernel"), "");
}

TEST(LinuxPortSystem, ListsFoldersInOrder) {
  const TempFolder folder;
  folder.Write("parport1/base-addr", "");
  folder.Write("default", "");
  folder.Write("parport0/base-addr", "");
  const auto system = LinuxPortSystem();
  EXPECT_THAT(system->ListFolder(folder.Path()),
              testing::ElementsAre("default", "parport0", "parport1"));
  EXPECT_THAT(system->ListFolder(folder / "none"), testing::IsEmpty());
}

TEST(LinuxPortSystem, NamesTheGroupOfANode) {
  const auto system = LinuxPortSystem();
  EXPECT_EQ(system->GroupOf("/proc"), "root");
  EXPECT_EQ(system->GroupOf("/no such file"), "");
}
