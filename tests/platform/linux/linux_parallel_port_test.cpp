// The calls that a parallel port makes from the first access to the exit, which way it is reached,
// and what the operator is told, for every answer of the kernel.
#include "support/fake_port_system.h"
#include "support/has_parts.h"

namespace {

/// One message a row, which holds the row's parts, separated by "|".
void ExpectTold(const PortRig& rig, const std::vector<std::string>& rows) {
  std::vector<testing::Matcher<std::string>> messages;
  for (const std::string& row : rows) messages.push_back(HasParts(row));
  EXPECT_THAT(rig.told, testing::ElementsAreArray(messages));
}

struct LinuxParallelPortTest : testing::Test, PortRig {};

const std::string kTaken = " PPEXCL within:2000 PPCLAIM PPRDATA PPRCONTROL";
const std::string kGivenBack = "PPWCONTROL=0C PPWDATA=A5 PPRELEASE close";
const std::string kNode = "/dev/parport0 (port 0x378)";

TEST_F(LinuxParallelPortTest, FromFirstAccessToExit) {
  struct Row {
    std::uint32_t base;
    bool othersRegistered;  // a shared claim then, on a fresh descriptor
    std::string taken, used, givenBack;
  };
  const std::string open = "open:/dev/parport0", used = "PPWDATA=7E PPWCONTROL=04 PPRSTATUS";
  for (const Row& row :
       {Row{0x378, false, open + kTaken, used, kGivenBack},
        {0x378, true,
         open + " PPEXCL within:2000 PPCLAIM close " + open +
             " within:2000 PPCLAIM PPRDATA PPRCONTROL",
         used, kGivenBack},
        {0xD000, false, "ioperm:D000+03 in:D000 in:D000 in:D002", "out:D000=7E out:D002=04 in:D001",
         "out:D002=03 out:D000=A5 ioperm:D000-03"}}) {
    PortRig rig;
    rig.AddUsualPort();
    rig.kernel.othersRegistered = row.othersRegistered;
    rig.io->DlPortWritePortUchar(row.base, 0);
    EXPECT_EQ(rig.io->DlPortReadPortUchar(row.base + 1), std::nullopt);
    EXPECT_EQ(rig.Calls(), "") << "nothing is touched before a port is used";
    rig.io->UsePort({.base = row.base});
    EXPECT_EQ(rig.Calls(), row.taken);
    rig.io->DlPortWritePortUchar(row.base, 0x7E);
    rig.io->DlPortWritePortUchar(row.base + 2, 0x04);
    EXPECT_EQ(rig.io->DlPortReadPortUchar(row.base + 1), 0x78);
    EXPECT_EQ(rig.Calls(), row.used);
    EXPECT_TRUE(rig.io->StillThere());
    rig.io.reset();
    EXPECT_EQ(rig.Calls(), row.givenBack);
    ExpectTold(rig, {});
  }
}

TEST_F(LinuxParallelPortTest, AddressChangeGivesTheOldPortBackFirst) {
  kernel.AddPort("parport1", "890\t0\n");  // its data register: the first one's control
  UseUsualPort();
  io->DlPortWritePortUchar(0x37A, 0x01);
  io->UsePort({.base = 0x37A});
  io->DlPortWritePortUchar(0x37A, 0x01);
  EXPECT_EQ(Calls(),
            "PPWCONTROL=01 " + kGivenBack + " open:/dev/parport1" + kTaken + " PPWDATA=01");
}

TEST_F(LinuxParallelPortTest, AFailingAccessIsToldOnceAndEndsTheUseOfThePort) {
  for (const std::string call : {"PPWDATA", "PPWCONTROL", "PPRSTATUS"}) {
    PortRig rig;
    rig.UseUsualPort();
    rig.kernel.failures[call] = ENODEV;
    for (int i = 0; i < 3; ++i) {
      rig.io->DlPortWritePortUchar(0x378, 0x11);
      rig.io->DlPortWritePortUchar(0x37A, 0x01);
      EXPECT_EQ(rig.io->DlPortReadPortUchar(0x379), std::nullopt) << call;
    }
    EXPECT_FALSE(rig.io->StillThere());
    rig.io.reset();
    ExpectTold(rig, {kNode + " has failed|" + call + ": No such device"});
  }
}

TEST_F(LinuxParallelPortTest, APortThatHasGoneIsLetGoAndToldWhenItIsLookedFor) {
  for (const bool another : {false, true}) {  // in its place by then
    PortRig rig;
    rig.UseUsualPort();
    EXPECT_TRUE(rig.io->StillThere());
    rig.kernel.RemoveUsualPort();
    if (another) rig.AddUsualPort();
    EXPECT_TRUE(rig.io->DlPortReadPortUchar(0x379).has_value()) << "no access looks for it";
    EXPECT_EQ(rig.Calls(), "PPRSTATUS");
    for (int i = 0; i < 2; ++i) {
      EXPECT_FALSE(rig.io->StillThere());
      rig.io->DlPortWritePortUchar(0x378, 0x7E);
      EXPECT_EQ(rig.io->DlPortReadPortUchar(0x379), std::nullopt);
    }
    EXPECT_EQ(rig.Calls(), kGivenBack);
    ExpectTold(rig, {kNode + " has gone|Bring the port back. Then enter the address again"});
    if (!another) rig.AddUsualPort();
    rig.io->UsePort({.base = 0x378});
    EXPECT_EQ(rig.Calls(), "open:/dev/parport0" + kTaken);
    EXPECT_TRUE(rig.io->StillThere());
  }
}

TEST_F(LinuxParallelPortTest, EveryStepOfGivingBackIsTriedAndTheFirstFaultIsTold) {
  UseUsualPort();
  kernel.failures = {{"PPWCONTROL", EIO}, {"PPRELEASE", EINVAL}};
  io.reset();
  EXPECT_EQ(Calls(), kGivenBack);
  ExpectTold(*this, {"PPWCONTROL: Input/output error"});
}

/// Also the control bits without a pin, which never reach the driver.
TEST_F(LinuxParallelPortTest, WhatIsWrongIsToldOnceForEachUseOfAnAddress) {
  UseUsualPort();
  kernel.AddPort("parport1", "632\t0\n");
  for (const int value : {0x0F, 0x3F, 0x3F})
    io->DlPortWritePortUchar(0x37A, static_cast<std::uint8_t>(value));
  EXPECT_EQ(Calls(), "PPWCONTROL=0F PPWCONTROL=0F PPWCONTROL=0F");
  kernel.failures = {{"PPRSTATUS", EIO}, {"ioperm", ENOSYS}};
  for (const std::uint32_t base : {0x378U, 0x278U, 0x100U, 0x200U, 0x100U}) {
    if (base != 0x378) io->UsePort({.base = base});
    io->DlPortWritePortUchar(base + 2, 0x1F);
    io->DlPortReadPortUchar(base + 1);
  }
  const std::string other = "/dev/parport1 (port 0x278)";
  ExpectTold(*this, {kNode + " was to write 0x3F|SCL mask", kNode + " has failed",
                     other + "|SCL mask", other + " has failed", "0x100", "0x200", "0x100"});
}

TEST(LinuxPortWays, AMachineWithoutIoInstructionsNeverTriesThem) {
  for (const bool knowsPorts : {false, true}) {
    PortRig rig;
    if (knowsPorts) rig.AddUsualPort();
    rig.io = std::make_unique<LinuxParallelPort>(
        std::make_unique<FakePortSystem>(rig.kernel), "boards",
        [&](auto& text) { rig.told.push_back(text); }, kOtherPortWays);
    rig.io->UsePort({.base = 0x278});
    EXPECT_EQ(rig.Calls(), "");
    ExpectTold(rig, {"no parallel port at 0x278: no /dev/parportN has this address.\n\n|" +
                     std::string(knowsPorts ? "exist: 0x378 (/dev/parport0)" : "GpioPort.csv")});
  }
}

const std::string kRule = "70-isp-writer-ppdev.rules";

/// A machine, by what it differs in from one with a free port.
struct Machine {
  std::string differs;
  std::map<std::string, int> failures;
  std::string result;  // "node" or "direct": how the port is reached; else parts of the message
};

void Prepare(const Machine& machine, FakeKernel& kernel) {
  const auto is = [&](const char* word) { return machine.differs.find(word) != std::string::npos; };
  const std::array<std::pair<std::string, const char*>, 6> ports{
      {{"default", ""},
       {"parport1", "632\t888\n"},  // the second number is the ECP base
       {"parport0", "888\t1912\n"},
       {"parport2", "53248\t53504\n"},
       {"usb", "0\t0\n"},
       {"far", "65536\t0\n"}}};
  for (const auto& [name, base] : ports) {
    if (!is("no ports") && !(is("no port0") && name == "parport0")) kernel.AddPort(name, base);
  }
  if (is("held")) kernel.holder = "lp\n";
  if (is("holder unknown")) kernel.holder = "";
  kernel.othersRegistered = is("idle driver");
  kernel.opensUntilHeld = is("taken at once") ? 1 : is("taken later") ? 2 : 0;
  kernel.registeredAlone = is("alone");
  if (is("rule delivered")) kernel.texts["/usr/lib/udev/rules.d/" + kRule] = "SUBSYSTEM==";
  if (is("rule copied")) kernel.texts["/etc/udev/rules.d/" + kRule] = "SUBSYSTEM==";
  kernel.folders["/proc/sys/dev/parport/parport0/devices"] = {"active", "ppdev1", "lp"};
  kernel.texts["/sys/kernel/security/lockdown"] = "none [integrity] confidentiality\n";
  if (is("group root")) kernel.group = "root";
  if (is("group unknown")) kernel.group = "";
  kernel.root = is("as root");
  if (is("empty bus")) kernel.registers.fill(0xFF);
  if (is("but control")) kernel.registers[2] = 0x0C;
  kernel.failures = machine.failures;
}

TEST(LinuxPortWays, ThePortIsReachedOrTheOperatorIsTold) {
  const auto noDirect = [](int open) {
    return std::map<std::string, int>{{"ioperm", EPERM}, {"open", open}};
  };
  const std::string none = "no parallel port at 0x378";
  const std::string held = kNode + " is held by another driver: ";
  const std::string group =
      "group \"lp\"|join the group and log in again:\n    sudo usermod -aG lp "
      "$USER\nor ";
  const std::string install = "install the udev rule " + kRule + " that comes";
  const std::string enter = "Then enter the address again in the Setting window.";
  const std::string sit = "log in at the PC itself, not over the network: the installed udev rule";
  const Machine machines[] = {
      {"", {}, "node"},
      {"holder unknown", {}, "node"},
      {"idle driver", {}, "node"},
      {"", {{"open", EACCES}}, "direct"},
      {"no ports", {}, "direct"},
      {"no ports, empty bus but control", {}, "direct"},
      {"", noDirect(ENOENT), kNode + "|No such file|modprobe ppdev\n" + enter},
      {"", noDirect(ENXIO), "0x378|modprobe ppdev"},
      {"", noDirect(ENODEV), "0x378|modprobe ppdev"},
      {"", noDirect(EMFILE), "0x378|Too many open files"},
      {"", noDirect(EACCES),
       "No permission|" + kNode + "|" + group + install + " with this program. " + enter},
      {"group root", noDirect(EACCES), "\"root\". To get the permission, " + install},
      {"group unknown", noDirect(EACCES), kNode + ". To get the permission, " + install},
      {"rule delivered", noDirect(EACCES), group + sit},
      {"rule copied, group root", noDirect(EACCES), "\"root\". To get the permission, " + sit},
      {"as root", noDirect(EPERM), kNode + " is refused even to root|lockdown"},
      {"held", {}, held + "lp.|" + enter},
      {"idle driver, holder unknown", {}, held + "ppdev1, lp."},  // a shared claim would succeed
      {"idle driver, taken at once", {}, held + "lp."},
      {"idle driver, taken later", {}, held + "ppdev1, lp."},
      {"alone", {}, kNode + " is free, but|as its only one: ppdev1, lp.|" + enter},
      {"alone, holder unknown", {}, held + "ppdev1, lp."},
      {"", {{"PPEXCL", EINVAL}}, "0x378|PPEXCL: Invalid argument"},
      {"", {{"PPCLAIM", EIO}}, "0x378|PPCLAIM: Input/output"},
      {"", {{"PPRDATA", EIO}}, "0x378|PPRDATA: Input/output"},
      {"", {{"PPRCONTROL", ENODEV}}, "PPRCONTROL: No such device"},
      {"no ports, empty bus",
       {},
       none + "|found nothing there|modprobe -a parport_pc ppdev\n" + enter},
      {"no port0",
       {{"ioperm", EPERM}},
       none + "|/dev/parportN|for root only|exist: 0x278 (/dev/parport1), 0xD000 (/dev/parport2)."},
      {"no port0, as root", {{"ioperm", ENOSYS}}, "0x378|ioperm: Function not implemented"},
      {"no port0, as root",
       {{"ioperm", EPERM}},
       "0x378|even to root|Secure Boot|says: none [integrity] confidentiality)"},
  };
  for (const Machine& machine : machines) {
    SCOPED_TRACE(machine.differs + " -> " + machine.result);
    const bool node = machine.result == "node", direct = machine.result == "direct";
    PortRig rig;
    Prepare(machine, rig.kernel);
    rig.io->UsePort({.base = 0x378});
    EXPECT_EQ(rig.kernel.open, node) << "a descriptor was left open";
    EXPECT_EQ(rig.kernel.ioPorts, direct ? 0x378U : 0U);
    EXPECT_EQ(rig.io->StillThere(), node || direct);
    rig.Calls();
    rig.io->DlPortWritePortUchar(0x378, 0x5A);
    EXPECT_EQ(rig.io->DlPortReadPortUchar(0x379).has_value(), node || direct);
    EXPECT_EQ(rig.Calls(), node ? "PPWDATA=5A PPRSTATUS" : direct ? "out:378=5A in:379" : "");
    ExpectTold(rig, node || direct ? std::vector<std::string>{} : std::vector{machine.result});
  }
}

}  // namespace
