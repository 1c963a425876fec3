// The running system, as far as a machine without a parallel port has it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <csignal>
#include <cstdlib>

#include "platform/directories.h"
#include "platform/files.h"
#include "platform/linux/port_system.h"
#include "platform/tick_counter.h"
#include "support/temp_folder.h"

using testing::ElementsAre;

TEST(LinuxPortSystem, FailuresAreNegativeErrorNumbers) {
  const TempFolder folder;
  const auto system = LinuxPortSystem();
  EXPECT_EQ(system->Open(folder / "none"), -ENOENT);
  EXPECT_EQ(system->IoctlWithin(-1, TIOCEXCL, 1000), -EBADF);
  itimerval left{};
  getitimer(ITIMER_REAL, &left);
  EXPECT_EQ(left.it_value.tv_sec + left.it_value.tv_usec, 0) << "the timer of the call goes on";
  EXPECT_LT(system->IoPerm(0xFFFF, 3, true), 0);  // beyond the last I/O port

  const int null = system->Open("/dev/null");
  ASSERT_GE(null, 0);
  EXPECT_EQ(system->Ioctl(null, TIOCEXCL, nullptr), -ENOTTY);
  system->Close(null);
  EXPECT_EQ(system->Ioctl(null, TIOCEXCL, nullptr), -EBADF);
}

TEST(LinuxPortSystem, ReadsTextsFoldersAndGroups) {
  const auto system = LinuxPortSystem();
  EXPECT_EQ(system->ReadText("/proc/sys/kernel/ostype"), "Linux\n");
  EXPECT_EQ(system->ReadText("/proc/sys/kernel/no such file"), "");
  EXPECT_EQ(system->ReadText("/proc/sys/kernel"), "");
  EXPECT_EQ(system->GroupOf("/proc"), "root");
  EXPECT_EQ(system->GroupOf("/no such file"), "");

  const TempFolder folder;
  for (const char* name : {"parport1/base-addr", "default", "parport0/base-addr"})
    folder.Write(name, "");
  EXPECT_THAT(system->ListFolder(folder.Path()), ElementsAre("default", "parport0", "parport1"));
  EXPECT_THAT(system->ListFolder(folder / "none"), ElementsAre());

  constexpr gid_t kNameless = 3'999'999'999;
  const std::string given = folder.Write("given", "");
  if (chown(given.c_str(), geteuid(), kNameless) == 0) {  // root only
    EXPECT_EQ(system->GroupOf(given), "");
  }
}

TEST(LinuxFiles, DevicesAreNotRead) {
  EXPECT_EQ(ReadFile("/dev/zero", 9).Reason(), "the file cannot be read: it is not a regular file");
}

TEST(LinuxFiles, OnAFullDiskTheOldContentIsKept) {
  const TempFolder folder;
  folder.Write("a", "old");
  folder.Write("log", "ab");
  std::signal(SIGXFSZ, SIG_IGN);  // the write fails instead
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit full{4, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &full);
  const std::array<std::uint8_t, 6> longer{1, 2, 3, 4, 5, 6};
  std::vector<std::string> problems;
  for (const char* name : {"a", "b"})
    problems.push_back(WriteAtStart(folder / name, longer).Reason());
  problems.push_back(AppendToFile(folder / "log", "cdef", "").Reason());
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_THAT(problems, ElementsAre("File too large", "File too large", "File too large"));
  EXPECT_EQ(folder.Read("a"), "old");
  EXPECT_EQ(folder.Read("log"), "ab") << "no half line";
  EXPECT_EQ(folder.Names().size(), 2U) << "no half file is left";
}

TEST(LinuxFiles, WritingKeepsLinksAndPermissions) {
  namespace fs = std::filesystem;
  const TempFolder folder;
  const std::array<std::uint8_t, 2> bytes{'x', 'y'};
  const fs::path real = folder.Write("far/real", "12345");
  fs::create_symlink("far/real", folder / "link");
  for (const auto rights : {fs::perms::owner_read | fs::perms::owner_write, fs::perms{0664}}) {
    fs::permissions(real, rights);
    EXPECT_TRUE(WriteAtStart(folder / "link", bytes).Ok());
    EXPECT_EQ(fs::read_symlink(folder / "link"), "far/real");
    EXPECT_EQ(folder.Read("far/real"), "xy345");
    EXPECT_EQ(fs::status(real).permissions(), rights);
  }
}

TEST(LinuxTickCounter, AdvancesInStepsOf64ToTheSecond) {
  const auto ticks = SystemTickCounter();
  const auto nextStep = [&ticks] {
    const std::uint32_t now = ticks->GetTickCount();
    std::uint32_t next = now;
    while (next == now) next = ticks->GetTickCount();
    return next;
  };
  const std::uint32_t first = nextStep();
  const std::uint32_t step = nextStep() - first;
  // A thread that was not running in between sees several steps at once.
  EXPECT_GE(step, 15U);
  const double steps = std::round(step / 15.625);
  EXPECT_LT(std::abs(step - steps * 15.625), 1) << "a whole number of steps, but for the rounding";
}

TEST(LinuxDirectories, AnInstalledProgramHasItsFoldersWithTheOperator) {
  const auto expect = [](const char* config, const char* data, const char* state) {
    const Directories found = SystemDirectories("isp-writer");
    EXPECT_EQ(found.settingsFolder, config);
    EXPECT_EQ(found.programFolder, data);
    EXPECT_EQ(found.stateFolder, state);
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(found.deliveredFolder, program.parent_path().parent_path() / "share/isp-writer");
  };
  setenv("XDG_CONFIG_HOME", "/xdg", 1);
  setenv("XDG_DATA_HOME", "/data", 1);
  setenv("XDG_STATE_HOME", "/state", 1);
  expect("/xdg/isp-writer", "/data/isp-writer", "/state/isp-writer");

  for (const char* variable : {"XDG_CONFIG_HOME", "XDG_STATE_HOME"}) unsetenv(variable);
  setenv("XDG_DATA_HOME", "no/absolute/path", 1);
  setenv("HOME", "/home/operator", 1);
  expect("/home/operator/.config/isp-writer", "/home/operator/.local/share/isp-writer",
         "/home/operator/.local/state/isp-writer");
  unsetenv("HOME");
  EXPECT_TRUE(SystemDirectories("isp-writer").settingsFolder.is_absolute()) << "as for a service";
}
