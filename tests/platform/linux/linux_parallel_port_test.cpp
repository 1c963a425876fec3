// The calls that a parallel port makes from the first access to the exit.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/parallel_port_bench.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(LinuxParallelPort, NothingIsTouchedBeforeThePortIsUsed) {
  Bench bench;
  bench.AddUsualPort();
  bench.io->DlPortWritePortUchar(0x378, 0);
  EXPECT_EQ(bench.io->DlPortReadPortUchar(0x379), std::nullopt);
  bench.io.reset();
  EXPECT_EQ(bench.kernel.TakeCalls(), "");
}

TEST(LinuxParallelPort, NodeFromFirstAccessToExit) {
  Bench bench;
  bench.AddUsualPort();
  bench.io->UsePort(0x378);
  EXPECT_EQ(bench.kernel.TakeCalls(), "open:/dev/parport0 PPEXCL PPCLAIM PPRDATA PPRCONTROL");

  bench.io->DlPortWritePortUchar(0x378, 0x7E);
  bench.io->DlPortWritePortUchar(0x37A, 0x04);
  EXPECT_EQ(bench.io->DlPortReadPortUchar(0x379), 0x78);
  bench.io->DlPortWritePortUchar(0x37A, 0x00);
  EXPECT_EQ(bench.kernel.TakeCalls(), "PPWDATA=7E PPWCONTROL=04 PPRSTATUS PPWCONTROL=00");

  bench.io.reset();
  EXPECT_EQ(bench.kernel.TakeCalls(), "PPWCONTROL=0C PPWDATA=A5 PPRELEASE close");
  EXPECT_EQ(bench.kernel.registers[0], 0xA5);
  EXPECT_THAT(bench.told, IsEmpty());
}

TEST(LinuxParallelPort, SharedClaimGoesOnAFreshDescriptor) {
  Bench bench;
  bench.AddUsualPort();
  bench.kernel.failures["PPCLAIM"] = {ENXIO, 1};
  bench.io->UsePort(0x378);
  EXPECT_EQ(bench.kernel.TakeCalls(),
            "open:/dev/parport0 PPEXCL PPCLAIM close "
            "open:/dev/parport0 PPCLAIM PPRDATA PPRCONTROL");
}

TEST(LinuxParallelPort, PortThatIsTakenBetweenTheTwoClaimsIsLeftAlone) {
  Bench bench;
  bench.AddUsualPort();
  bench.kernel.failures["PPCLAIM"] = {ENXIO, 1};
  bench.kernel.meanwhile = [&](const std::string& name) {
    if (name == "close") bench.kernel.SetHolder("parport0", "lp");
  };
  bench.io->UsePort(0x378);
  EXPECT_EQ(bench.kernel.TakeCalls(), "open:/dev/parport0 PPEXCL PPCLAIM close");
  EXPECT_THAT(bench.told, ElementsAre(HasSubstr("held by another driver: lp.")));
}

TEST(LinuxParallelPort, DirectAccessFromFirstAccessToExit) {
  Bench bench;
  bench.io->UsePort(0xD000);
  EXPECT_EQ(bench.kernel.TakeCalls(), "ioperm:D000+03on in:D000 in:D000 in:D002");

  bench.io->DlPortWritePortUchar(0xD000, 0x7E);
  bench.io->DlPortWritePortUchar(0xD002, 0x10);
  EXPECT_EQ(bench.io->DlPortReadPortUchar(0xD001), 0x78);
  EXPECT_EQ(bench.kernel.TakeCalls(), "out:D000=7E out:D002=10 in:D001");

  bench.io.reset();
  EXPECT_EQ(bench.kernel.TakeCalls(), "out:D002=03 out:D000=A5 ioperm:D000+03off");
  EXPECT_THAT(bench.told, IsEmpty());
}

TEST(LinuxParallelPort, AddressChangeGivesTheOldPortBackFirst) {
  Bench bench;
  bench.AddUsualPort();
  bench.kernel.AddPort("parport1", "890\t0\n");  // its data register: the first one's control
  bench.io->UsePort(0x378);
  bench.io->DlPortWritePortUchar(0x37A, 0x01);
  bench.kernel.TakeCalls();

  bench.io->UsePort(0x37A);
  bench.io->DlPortWritePortUchar(0x37A, 0x01);
  EXPECT_EQ(bench.kernel.TakeCalls(),
            "PPWCONTROL=0C PPWDATA=A5 PPRELEASE close "
            "open:/dev/parport1 PPEXCL PPCLAIM PPRDATA PPRCONTROL PPWDATA=01");
}

TEST(LinuxParallelPort, ProblemIsToldOnceForEachUseOfAnAddress) {
  Bench bench;
  bench.kernel.failures["ioperm"] = {ENOSYS};
  for (const std::uint32_t base : {0x378U, 0x278U, 0x378U}) {
    bench.io->UsePort(base);
    for (int i = 0; i < 3; ++i) {
      bench.io->DlPortWritePortUchar(base, 0);
      bench.io->DlPortReadPortUchar(base + 1);
    }
  }
  EXPECT_THAT(bench.told,
              ElementsAre(HasSubstr("0x378"), AllOf(HasSubstr("0x278"), Not(HasSubstr("0x378"))),
                          HasSubstr("0x378")));
}

TEST(LinuxParallelPort, AFailingAccessIsToldOnceAndEndsTheUseOfThePort) {
  for (const char* call : {"PPWDATA", "PPWCONTROL", "PPRSTATUS"}) {
    SCOPED_TRACE(call);
    Bench bench;
    bench.AddUsualPort();
    bench.io->UsePort(0x378);
    bench.kernel.failures[call] = {ENODEV};
    for (int i = 0; i < 3; ++i) {
      bench.io->DlPortWritePortUchar(0x378, 0x11);
      bench.io->DlPortWritePortUchar(0x37A, 0x01);
      EXPECT_EQ(bench.io->DlPortReadPortUchar(0x379), std::nullopt);
    }
    bench.io.reset();
    EXPECT_THAT(bench.told, ElementsAre(AllOf(HasSubstr("/dev/parport0 (port 0x378) has failed"),
                                              HasSubstr(call), HasSubstr("No such device"))));
    EXPECT_FALSE(bench.kernel.open);
  }
}

TEST(LinuxParallelPort, EveryStepOfGivingBackIsTriedAndTheFirstFaultIsTold) {
  Bench bench;
  bench.AddUsualPort();
  bench.io->UsePort(0x378);
  bench.kernel.TakeCalls();
  bench.kernel.failures["PPWCONTROL"] = {EIO};
  bench.kernel.failures["PPRELEASE"] = {EINVAL};
  bench.io.reset();
  EXPECT_EQ(bench.kernel.TakeCalls(), "PPWCONTROL=0C PPWDATA=A5 PPRELEASE close");
  EXPECT_THAT(bench.told, ElementsAre(HasSubstr("PPWCONTROL: Input/output error")));
}

TEST(LinuxParallelPort, ControlBitsWithoutAPinNeverReachTheDriverAndAreToldOnce) {
  Bench bench;
  bench.AddUsualPort();
  bench.io->UsePort(0x378);
  bench.kernel.TakeCalls();
  for (const int value : {0x0F, 0x2F, 0x2F})
    bench.io->DlPortWritePortUchar(0x37A, static_cast<std::uint8_t>(value));
  EXPECT_EQ(bench.kernel.TakeCalls(), "PPWCONTROL=0F PPWCONTROL=0F PPWCONTROL=0F");
  EXPECT_THAT(bench.told, ElementsAre(AllOf(HasSubstr("/dev/parport0 (port 0x378)"),
                                            HasSubstr("to write 0x2F"), HasSubstr("SCL mask"))));
}

TEST(LinuxParallelPort, FaultsOfTheNextPortAreToldToo) {
  Bench bench;
  bench.AddUsualPort();
  bench.kernel.AddPort("parport1", "632\t0\n");
  bench.kernel.failures["PPRSTATUS"] = {EIO};
  for (const std::uint32_t base : {0x378U, 0x278U}) {
    bench.io->UsePort(base);
    bench.io->DlPortWritePortUchar(base + 2, 0x10);
    bench.io->DlPortReadPortUchar(base + 1);
  }
  EXPECT_THAT(
      bench.told,
      ElementsAre(HasSubstr("SCL mask"), HasSubstr("/dev/parport0 (port 0x378) has failed"),
                  HasSubstr("SCL mask"), HasSubstr("/dev/parport1 (port 0x278) has failed")));
}

TEST(LinuxParallelPort, RegistersArePutBackWhenAnExceptionUnwinds) {
  Bench bench;
  bench.AddUsualPort();
  try {
    const auto io = std::move(bench.io);
    io->UsePort(0x378);
    io->DlPortWritePortUchar(0x378, 0x00);
    throw std::runtime_error("in the middle of a byte");
  } catch (const std::runtime_error&) {
  }
  EXPECT_EQ(bench.kernel.registers[0], 0xA5);
  EXPECT_FALSE(bench.kernel.open);
}
