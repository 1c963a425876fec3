// The calls that a parallel port makes from the first access to the exit, which way it is reached,
// and what the operator is told, for every answer of the kernel.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "support/fake_port_system.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

struct LinuxParallelPortTest : testing::Test, PortBench {
  std::string Calls() { return kernel.TakeCalls(); }
};

const std::string kTaken = "open:/dev/parport0 PPEXCL PPCLAIM PPRDATA PPRCONTROL";
const std::string kGivenBack = "PPWCONTROL=0C PPWDATA=A5 PPRELEASE close";

TEST_F(LinuxParallelPortTest, NodeFromFirstAccessToExit) {
  AddUsualPort();
  io->DlPortWritePortUchar(0x378, 0);
  EXPECT_EQ(io->DlPortReadPortUchar(0x379), std::nullopt);
  EXPECT_EQ(Calls(), "") << "nothing is touched before a port is used";
  io->UsePort(0x378);
  EXPECT_EQ(Calls(), kTaken);
  EXPECT_EQ(kernel.longestClaim_ms, 2000U);

  io->DlPortWritePortUchar(0x378, 0x7E);
  io->DlPortWritePortUchar(0x37A, 0x04);
  EXPECT_EQ(io->DlPortReadPortUchar(0x379), 0x78);
  EXPECT_EQ(Calls(), "PPWDATA=7E PPWCONTROL=04 PPRSTATUS");
  try {  // also when an exception unwinds
    const auto unwound = std::move(io);
    throw std::runtime_error("in the middle of a byte");
  } catch (const std::runtime_error&) {
  }
  EXPECT_EQ(Calls(), kGivenBack);
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(LinuxParallelPortTest, DirectAccessFromFirstAccessToExit) {
  io->UsePort(0xD000);
  EXPECT_EQ(Calls(), "ioperm:D000+03on in:D000 in:D000 in:D002");
  io->DlPortWritePortUchar(0xD000, 0x7E);
  io->DlPortWritePortUchar(0xD002, 0x10);
  EXPECT_EQ(io->DlPortReadPortUchar(0xD001), 0x78);
  EXPECT_EQ(Calls(), "out:D000=7E out:D002=10 in:D001");
  io.reset();
  EXPECT_EQ(Calls(), "out:D002=03 out:D000=A5 ioperm:D000+03off");
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(LinuxParallelPortTest, SharedClaimGoesOnAFreshDescriptor) {
  AddUsualPort();
  kernel.failures["PPCLAIM"] = {ENXIO, 1};
  io->UsePort(0x378);
  EXPECT_EQ(Calls(),
            "open:/dev/parport0 PPEXCL PPCLAIM close "
            "open:/dev/parport0 PPCLAIM PPRDATA PPRCONTROL");
}

TEST_F(LinuxParallelPortTest, AddressChangeGivesTheOldPortBackFirst) {
  kernel.AddPort("parport1", "890\t0\n");  // its data register: the first one's control
  UseUsualPort();
  io->DlPortWritePortUchar(0x37A, 0x01);
  io->UsePort(0x37A);
  io->DlPortWritePortUchar(0x37A, 0x01);
  EXPECT_EQ(Calls(), "PPWCONTROL=01 " + kGivenBack +
                         " open:/dev/parport1 PPEXCL PPCLAIM PPRDATA PPRCONTROL PPWDATA=01");
}

TEST_F(LinuxParallelPortTest, AFailingAccessIsToldOnceAndEndsTheUseOfThePort) {
  for (const char* call : {"PPWDATA", "PPWCONTROL", "PPRSTATUS"}) {
    PortBench bench;
    bench.UseUsualPort();
    bench.kernel.failures[call] = {ENODEV};
    for (int i = 0; i < 3; ++i) {
      bench.io->DlPortWritePortUchar(0x378, 0x11);
      bench.io->DlPortWritePortUchar(0x37A, 0x01);
      EXPECT_EQ(bench.io->DlPortReadPortUchar(0x379), std::nullopt) << call;
    }
    bench.io.reset();
    EXPECT_THAT(bench.told, ElementsAre(AllOf(HasSubstr("/dev/parport0 (port 0x378) has failed"),
                                              HasSubstr(call), HasSubstr("No such device"))));
  }
}

TEST_F(LinuxParallelPortTest, EveryStepOfGivingBackIsTriedAndTheFirstFaultIsTold) {
  UseUsualPort();
  kernel.failures["PPWCONTROL"] = {EIO};
  kernel.failures["PPRELEASE"] = {EINVAL};
  io.reset();
  EXPECT_EQ(Calls(), kGivenBack);
  EXPECT_THAT(told, ElementsAre(HasSubstr("PPWCONTROL: Input/output error")));
}

/// Also the control bits without a pin, which never reach the driver.
TEST_F(LinuxParallelPortTest, WhatIsWrongIsToldOnceForEachUseOfAnAddress) {
  UseUsualPort();
  kernel.AddPort("parport1", "632\t0\n");
  for (const std::uint8_t value : std::array<std::uint8_t, 3>{0x0F, 0x3F, 0x3F})
    io->DlPortWritePortUchar(0x37A, value);
  EXPECT_EQ(Calls(), "PPWCONTROL=0F PPWCONTROL=0F PPWCONTROL=0F");
  kernel.failures["PPRSTATUS"] = {EIO};
  io->DlPortReadPortUchar(0x379);
  io->UsePort(0x278);
  io->DlPortWritePortUchar(0x27A, 0x10);
  io->DlPortReadPortUchar(0x279);
  kernel.failures["ioperm"] = {ENOSYS};
  for (const std::uint32_t base : {0x100U, 0x200U, 0x100U}) {
    io->UsePort(base);
    io->DlPortWritePortUchar(base, 0);
    io->DlPortReadPortUchar(base + 1);
  }
  EXPECT_THAT(told,
              ElementsAre(AllOf(HasSubstr("/dev/parport0 (port 0x378) was to write 0x3F"),
                                HasSubstr("SCL mask")),
                          HasSubstr("/dev/parport0 (port 0x378) has failed"), HasSubstr("SCL mask"),
                          HasSubstr("/dev/parport1 (port 0x278) has failed"), HasSubstr("0x100"),
                          HasSubstr("0x200"), HasSubstr("0x100")));
}

enum class Way { Node, Direct, None };

/// What a data write and a status read reach.
Way WayOf(PortBench& bench) {
  bench.kernel.TakeCalls();
  bench.io->DlPortWritePortUchar(0x378, 0x5A);
  const auto status = bench.io->DlPortReadPortUchar(0x379);
  const std::string calls = bench.kernel.TakeCalls();
  if (calls == "PPWDATA=5A PPRSTATUS" && status == bench.kernel.registers[1]) return Way::Node;
  if (calls == "out:378=5A in:379" && status == bench.kernel.registers[1]) return Way::Direct;
  EXPECT_EQ(calls, "");
  EXPECT_EQ(status, std::nullopt);
  return Way::None;
}

using Failures = std::map<std::string, FakeKernel::Failure>;

/// A machine, by what it differs in from one with a free port.
struct Machine {
  const char* what;
  std::string told;  // parts of the message; empty: nothing is told
  Failures failures = {};
  std::string differs = {};
  Way way = Way::None;
};

void Prepare(const Machine& machine, PortBench& bench) {
  FakeKernel& kernel = bench.kernel;
  const auto is = [&](const char* word) { return machine.differs.find(word) != std::string::npos; };
  if (is("later")) {  // 888 is no port there, but the ECP base
    for (const auto& [name, base] : {std::pair{"default", ""}, {"parport1", "632\t888\n"}}) {
      kernel.AddPort(name, base);
    }
  }
  if (!is("no port")) bench.AddUsualPort();
  if (is("others")) {  // without an address, and beyond the last one
    for (const auto& [name, base] : {std::pair{"parport1", "632\t0\n"},
                                     {"parport2", "53248\t53504\n"},
                                     {"usb", "0\t0\n"},
                                     {"far", "65536\t0\n"}}) {
      kernel.AddPort(name, base);
    }
  }
  if (is("held")) kernel.Holder("parport0") = "lp\n";
  if (is("holder unknown")) kernel.Holder("parport0") = "";
  kernel.folders["/proc/sys/dev/parport/parport0/devices"] = {"active", "ppdev1", "lp"};
  kernel.texts["/sys/kernel/security/lockdown"] = "none [integrity] confidentiality\n";
  if (is("group root")) kernel.group = "root";
  kernel.root = is("as root");
  if (is("empty bus")) kernel.registers.fill(0xFF);
  if (is("but control")) kernel.registers[2] = 0x0C;
  const int takenAt = is("taken at once") ? 1 : is("taken later") ? 2 : 0;
  kernel.meanwhile = [&kernel, takenAt, opened = 0](const std::string& call) mutable {
    if (call == "open" && ++opened == takenAt) kernel.Holder("parport0") = "lp\n";
  };
  kernel.failures = machine.failures;
}

TEST(LinuxPortWays, ThePortIsReachedOrTheOperatorIsTold) {
  const FakeKernel::Failure busy{ENXIO, 1}, refused{EPERM};
  const auto noDirect = [&](int open) { return Failures{{"ioperm", refused}, {"open", {open}}}; };
  const std::string node = "/dev/parport0 (port 0x378)";
  const std::string none = "no parallel port at 0x378";
  const std::string held = node + " is held by another driver: ";
  const Machine machines[] = {
      {"free", "", {}, "", Way::Node},
      {"idle driver", "", {{"PPCLAIM", busy}}, "", Way::Node},
      {"holder not told", "", {}, "holder unknown", Way::Node},
      {"not the first", "", {}, "later", Way::Node},
      {"no permission, but direct", "", {{"open", {EACCES}}}, "", Way::Direct},
      {"no driver, but direct", "", {{"open", {ENOENT}}}, "", Way::Direct},
      {"not known, but direct", "", {}, "no port", Way::Direct},
      {"one register is not FF", "", {}, "no port, empty bus but control", Way::Direct},
      {"ENOENT", node + "|No such file|modprobe ppdev", noDirect(ENOENT)},
      {"ENXIO", "0x378|modprobe ppdev", noDirect(ENXIO)},
      {"ENODEV", "0x378|modprobe ppdev", noDirect(ENODEV)},
      {"EACCES",
       "No permission|" + node +
           "|group \"lp\"|usermod -aG lp $USER\nor install the udev "
           "rule 70-isp-writer-ppdev.rules",
       noDirect(EACCES)},
      {"EPERM", "No permission|group \"lp\"", noDirect(EPERM)},
      {"group", "\"root\". To get the permission, install the", noDirect(EACCES), "group root"},
      {"to root", node + " is refused even to root|lockdown", noDirect(EPERM), "as root"},
      {"EMFILE", "0x378|Too many open files", noDirect(EMFILE)},
      {"no driver, nothing there", "modprobe ppdev", {{"open", {ENOENT}}}, "empty bus"},
      {"held", held + "lp.", {}, "held"},
      {"not alone: a shared claim would succeed",
       held + "ppdev1, lp.",
       {{"PPCLAIM", busy}},
       "holder unknown"},
      {"between the claims", held + "lp.", {{"PPCLAIM", busy}}, "taken at once"},
      {"before the shared claim", held + "ppdev1, lp.", {{"PPCLAIM", busy}}, "taken later"},
      {"shares with nobody", held + "ppdev1, lp.", {{"PPCLAIM", {ENXIO}}}},
      {"PPEXCL", "0x378|PPEXCL: Invalid argument", {{"PPEXCL", {EINVAL}}}},
      {"PPCLAIM", "0x378|PPCLAIM: Input/output", {{"PPCLAIM", {EIO}}}},
      {"PPRDATA", "0x378|PPRDATA: Input/output", {{"PPRDATA", {EIO}}}},
      {"PPRCONTROL", "PPRCONTROL: No such device", {{"PPRCONTROL", {ENODEV}}}},
      {"no node",
       none + "|/dev/parportN|for root only|modprobe -a parport_pc ppdev",
       {{"ioperm", refused}},
       "no port"},
      {"ENOSYS, also to root",
       "0x378|ioperm: Function not implemented",
       {{"ioperm", {ENOSYS}}},
       "no port, as root"},
      {"others",
       "at 0x378|exist: 0x278 (/dev/parport1), 0xD000 (/dev/parport2).",
       {{"ioperm", refused}},
       "no port, others"},
      {"nothing answers", none + "|found nothing there", {}, "no port, empty bus"},
      {"no node, to root",
       "0x378|even to root|Secure Boot|says: none [integrity] confidentiality)",
       {{"ioperm", refused}},
       "no port, as root"},
  };
  for (const Machine& machine : machines) {
    SCOPED_TRACE(machine.what);
    PortBench bench;
    Prepare(machine, bench);
    bench.io->UsePort(0x378);
    EXPECT_EQ(WayOf(bench), machine.way);
    EXPECT_EQ(bench.kernel.open, machine.way == Way::Node) << "a descriptor was left open";
    EXPECT_EQ(bench.kernel.ioPorts.has_value(), machine.way == Way::Direct);
    ASSERT_EQ(bench.told.size(), machine.told.empty() ? 0U : 1U);
    std::istringstream parts(machine.told);
    for (std::string part; std::getline(parts, part, '|');) {
      EXPECT_THAT(bench.told[0], HasSubstr(part));
    }
  }
}

}  // namespace
