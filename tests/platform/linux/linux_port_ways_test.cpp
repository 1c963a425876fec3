// Which way the port is reached, and what the operator is told, for every answer of the kernel.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "support/parallel_port_bench.h"

using testing::HasSubstr;
using testing::SizeIs;

namespace {

enum class Way { Node, Direct, None };

/// What a data write and a status read reach.
Way WayOf(Bench& bench, std::uint32_t base) {
  bench.kernel.TakeCalls();
  bench.io->DlPortWritePortUchar(base, 0x5A);
  const auto status = bench.io->DlPortReadPortUchar(base + 1);
  const std::string calls = bench.kernel.TakeCalls();
  if (calls == "PPWDATA=5A PPRSTATUS" && status == bench.kernel.registers[1]) return Way::Node;
  if (calls.starts_with("out:") && status == bench.kernel.registers[1]) return Way::Direct;
  EXPECT_EQ(calls, "");
  EXPECT_EQ(status, std::nullopt);
  return Way::None;
}

struct Case {
  const char* name;
  std::function<void(FakeKernel&)> prepare;
  Way way;
  std::vector<std::string> message;  // its parts; none: nothing is told
};

void PrintTo(const Case& row, std::ostream* out) { *out << row.name; }

auto Fails(const char* call, int error, int times = FakeKernel::kAlways) {
  return [=](FakeKernel& kernel) { kernel.failures[call] = {error, times}; };
}

/// Direct access is refused, and one call more.
auto WithoutDirect(const char* call, int error) {
  return [=](FakeKernel& kernel) {
    kernel.failures["ioperm"] = {EPERM};
    kernel.failures[call] = {error};
  };
}

/// Direct access fails on a machine on which the kernel knows no port at the address.
auto NoNode(int error, bool root = false) {
  return [=](FakeKernel& kernel) {
    kernel.folders.clear();
    kernel.failures["ioperm"] = {error};
    kernel.root = root;
  };
}

class PortAt378 : public testing::TestWithParam<Case> {};

}  // namespace

TEST_P(PortAt378, IsReachedOrTheOperatorIsTold) {
  Bench bench;
  bench.AddUsualPort();
  GetParam().prepare(bench.kernel);
  bench.io->UsePort(0x378);

  EXPECT_EQ(WayOf(bench, 0x378), GetParam().way);
  if (GetParam().way != Way::Node) {
    EXPECT_FALSE(bench.kernel.open) << "a descriptor was left open";
  }
  ASSERT_THAT(bench.told, SizeIs(GetParam().message.empty() ? 0 : 1));
  for (const auto& part : GetParam().message) EXPECT_THAT(bench.told[0], HasSubstr(part));
}

INSTANTIATE_TEST_SUITE_P(
    Ways, PortAt378,
    testing::Values(Case{"free", [](FakeKernel&) {}, Way::Node, {}},
                    Case{"idleDriver", Fails("PPCLAIM", ENXIO, 1), Way::Node, {}},
                    Case{"holderNotTold",
                         [](FakeKernel& kernel) {
                           kernel.texts["/proc/sys/dev/parport/parport0/devices/active"].clear();
                         },
                         Way::Node,
                         {}},
                    Case{"otherPortFirst",
                         [](FakeKernel& kernel) {
                           kernel.folders.clear();
                           kernel.AddPort("default", "");
                           kernel.AddPort("parport1",
                                          "632\t888\n");  // 888 is no port, but the ECP base
                           kernel.AddPort("parport2", "888\t0\n");
                         },
                         Way::Node,
                         {}},
                    Case{"noPermissionButDirect", Fails("open", EACCES), Way::Direct, {}},
                    Case{"noDriverButDirect", Fails("open", ENOENT), Way::Direct, {}},
                    Case{"notKnownButDirect", NoNode(0), Way::Direct, {}}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    NodeNotOpened, PortAt378,
    testing::Values(
        Case{"ENOENT",
             WithoutDirect("open", ENOENT),
             Way::None,
             {"/dev/parport0 (port 0x378)", "No such file", "modprobe ppdev"}},
        Case{"ENXIO", WithoutDirect("open", ENXIO), Way::None, {"0x378", "modprobe ppdev"}},
        Case{"ENODEV", WithoutDirect("open", ENODEV), Way::None, {"0x378", "modprobe ppdev"}},
        Case{"EACCES",
             WithoutDirect("open", EACCES),
             Way::None,
             {"No permission", "/dev/parport0 (port 0x378)", "group \"lp\"", "usermod -aG lp $USER",
              "70-isp-writer-ppdev.rules"}},
        Case{"EPERM", WithoutDirect("open", EPERM), Way::None, {"No permission", "group \"lp\""}},
        Case{"groupRoot",
             [](FakeKernel& kernel) {
               WithoutDirect("open", EACCES)(kernel);
               kernel.group = "root";
             },
             Way::None,
             {"group \"root\". To get the permission, install the udev rule"}},
        Case{"refusedToRoot",
             [](FakeKernel& kernel) {
               WithoutDirect("open", EPERM)(kernel);
               kernel.root = true;
             },
             Way::None,
             {"/dev/parport0 (port 0x378) is refused even to root", "lockdown"}},
        Case{"EMFILE", WithoutDirect("open", EMFILE), Way::None, {"0x378", "Too many open files"}},
        Case{"emptyAddress",
             [](FakeKernel& kernel) {
               Fails("open", ENOENT)(kernel);
               kernel.registers.fill(0xFF);
             },
             Way::None,
             {"modprobe ppdev"}}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    NotTaken, PortAt378,
    testing::Values(
        Case{"held",
             [](FakeKernel& kernel) { kernel.SetHolder("parport0", "lp"); },
             Way::None,
             {"/dev/parport0 (port 0x378) is held by another driver: lp."}},
        Case{"holderNotToldAndNotAlone",
             [](FakeKernel& kernel) {
               kernel.texts["/proc/sys/dev/parport/parport0/devices/active"].clear();
               kernel.failures["PPCLAIM"] = {ENXIO, 1};  // the shared claim would succeed
               kernel.SetDrivers("parport0", {"active", "lp"});
             },
             Way::None,
             {"held by another driver: lp."}},
        Case{"becameActiveBeforeTheSharedClaim",
             [](FakeKernel& kernel) {
               kernel.failures["PPCLAIM"] = {ENXIO, 1};
               kernel.SetDrivers("parport0", {"active", "lp"});
               kernel.meanwhile = [&kernel, opened = 0](const std::string& call) mutable {
                 if (call == "open" && ++opened == 2) kernel.SetHolder("parport0", "lp");
               };
             },
             Way::None,
             {"held by another driver: lp."}},
        Case{"driverThatSharesWithNobody",
             [](FakeKernel& kernel) {
               Fails("PPCLAIM", ENXIO)(kernel);
               kernel.SetDrivers("parport0", {"active", "ppdev1", "lp"});
             },
             Way::None,
             {"held by another driver: ppdev1, lp."}},
        Case{"PPEXCL", Fails("PPEXCL", EINVAL), Way::None, {"0x378", "PPEXCL: Invalid argument"}},
        Case{"PPCLAIM", Fails("PPCLAIM", EIO), Way::None, {"0x378", "PPCLAIM: Input/output"}},
        Case{"PPRDATA", Fails("PPRDATA", EIO), Way::None, {"0x378", "PPRDATA: Input/output"}},
        Case{"PPRCONTROL", Fails("PPRCONTROL", ENODEV), Way::None, {"PPRCONTROL: No such device"}}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    NoSuchPort, PortAt378,
    testing::Values(
        Case{"EPERM",
             NoNode(EPERM),
             Way::None,
             {"no parallel port at 0x378", "/dev/parportN", "for root only",
              "modprobe -a parport_pc ppdev"}},
        Case{"ENOSYS", NoNode(ENOSYS), Way::None, {"0x378", "ioperm: Function not implemented"}},
        Case{"EINVAL", NoNode(EINVAL), Way::None, {"0x378", "ioperm: Invalid argument"}},
        Case{"others",
             [](FakeKernel& kernel) {
               NoNode(EPERM)(kernel);
               kernel.AddPort("parport0", "632\t0\n");
               kernel.AddPort("parport1", "53248\t53504\n");
               kernel.AddPort("parport2", "0\t0\n");  // a USB adapter
             },
             Way::None,
             {"at 0x378", "exist: 0x278 (/dev/parport0), 0xD000 (/dev/parport1)."}},
        Case{"nothingAnswers",
             [](FakeKernel& kernel) {
               NoNode(0)(kernel);
               kernel.registers.fill(0xFF);
             },
             Way::None,
             {"no parallel port at 0x378", "found nothing there"}},
        Case{"refusedToRoot",
             [](FakeKernel& kernel) {
               NoNode(EPERM, true)(kernel);
               kernel.texts["/sys/kernel/security/lockdown"] = "none [integrity] confidentiality\n";
             },
             Way::None,
             {"0x378", "even to root", "Secure Boot", "none [integrity] confidentiality)"}}),
    [](const auto& row) { return row.param.name; });
