// The calls that the bus makes on GPIO lines, from the first access to the exit.
#include <gmock/gmock.h>

#include "bus/i2c_master.h"
#include "support/fake_ticks.h"
#include "support/gpio_rig.h"

namespace {

struct GpioBus : GpioRig {
  FakeTicks ticks;
  IspBoards boards;
  IicPort port{*io, boards, {}};
  tongxun::BusTiming timing{ticks};
  tongxun::I2cMaster master{port, timing};

  explicit GpioBus(const std::string& file = Delivered()) : GpioRig(file) {
    boards.BoardTable[0] = PlainWires();
    port.InitPortShadows();
    port.PortBase = kBase;
    timing.BitDelayCount = 2;
    timing.ByteDelayCount = 12;
  }
};

const std::string kTaken =
    "open:/dev/gpiochip0 chipinfo lineinfo:17 lineinfo:17 lineinfo:27 "
    "request:27=out1 request:17=in+ close";
const std::string kGivenBack = "config:27=in+ close:27 close:17";

TEST(GpioBus, AFrameIsOneCallForEachChangeAndEachSample) {
  GpioBus bus;
  bus.master.I2cStart();
  EXPECT_EQ(bus.Calls(), kTaken + " config:17=out0 set:27=0");
  EXPECT_EQ(bus.kernel.gpio.Line(17).consumer, "isp-writer");
  EXPECT_EQ(bus.kernel.gpio.Line(27).consumer, "isp-writer");

  const std::string clock = " set:27=1 set:27=0";
  const std::string one = " config:17=in+" + clock, zero = " config:17=out0" + clock;
  EXPECT_FALSE(bus.master.I2cWriteByte(0xA5));
  const std::string byte = one + zero + one + zero + clock + one + zero + one;
  EXPECT_EQ(" " + bus.Calls(), byte + " set:27=1 get:17 set:27=0");
  bus.kernel.gpio.Line(17).pulledLow = true;
  EXPECT_TRUE(bus.master.I2cWriteByte(0x00));
  bus.kernel.gpio.Line(17).pulledLow = false;
  bus.Calls();

  bus.master.I2cStop();
  EXPECT_EQ(bus.Calls(), "config:17=out0 set:27=1 config:17=in+");
  bus.port.ReleaseLines();
  bus.io.reset();
  EXPECT_EQ(bus.Calls(), kGivenBack) << "both were released";
  EXPECT_EQ(bus.kernel.gpio.requested, "gpiochip0:27 gpiochip0:17 ");
  EXPECT_EQ(bus.kernel.gpio.OpenDescriptors(), 0U);
  EXPECT_TRUE(bus.told.empty());
}

TEST(GpioBus, TheLinesAreReleasedOnEveryWayOut) {
  using Way = void (*)(GpioBus & bus);
  const std::string released = "set:27=1 config:17=in+ " + kGivenBack;
  const std::pair<Way, std::string> ways[] = {
      {[](GpioBus& bus) { bus.io.reset(); }, released},
      {[](GpioBus& bus) { bus.io->UsePort({.base = 0x378}); }, released + " ioperm:378+03"},
      {[](GpioBus& bus) {
         bus.port.ReopenPort();
         bus.port.SetSclHigh();
       },
       released + " " + kTaken},
      {[](GpioBus& bus) {
         bus.kernel.failures["get"] = EIO;
         bus.port.SdaIsLow();
         bus.io.reset();
       },
       "get:17 " + released},
      {[](GpioBus& bus) {  // every step is tried
         bus.kernel.failures = {{"set", EIO}, {"config", EIO}};
         bus.io.reset();
       },
       "set:27=1 config:17=in+ config:27=in- config:17=in- close:27 close:17"},
  };
  for (const auto& [leave, calls] : ways) {
    GpioBus bus;
    bus.kernel.failures["ioperm"] = EPERM;
    bus.master.I2cStart();  // both lines are low
    bus.Calls();
    leave(bus);
    EXPECT_EQ(bus.Calls(), calls);
  }
}

/// SDA is driven by one line and sampled by another; the polarities of a board with transistors.
TEST(GpioBus, OutputsThatAreOnlyOutputsArePushPullAndRestAsTheBoardReleasesThem) {
  struct Row {
    bool sda, scl;  // polarities
    std::string taken, low, givenBack;
  };
  for (const Row& row : {Row{true, false, "request:7=out0 request:5=out1 request:6=in+",
                             "set:5=0 set:7=1", "config:7=in- config:5=in+"},
                         Row{false, true, "request:7=out1 request:5=out0 request:6=in+",
                             "set:5=1 set:7=0", "config:7=in+ config:5=in-"}}) {
    GpioBus bus("address,6710\ndata,7,gpiochip0,5\nstatus,7,gpiochip0,6\ncontrol,3,header,GPIO7\n");
    IspBoard& board = bus.boards.BoardTable[0];
    board.SdaOut = {0, row.sda, 0x80};
    board.SdaIn = {0, true, 0x80};
    board.SclOut = {0, row.scl, 0x08};
    bus.port.SetSdaHigh();
    bus.port.SetSclHigh();
    EXPECT_THAT(bus.Calls(), testing::EndsWith(row.taken + " close"));
    bus.port.SetSdaLow();
    bus.port.SetSclLow();
    EXPECT_EQ(bus.Calls(), row.low);
    EXPECT_TRUE(bus.port.SdaIsLow()) << "the input is pulled up, which means low on this board";
    EXPECT_EQ(bus.Calls(), "get:6");
    bus.port.ReleaseLines();
    bus.Calls();
    bus.io.reset();
    EXPECT_EQ(bus.Calls(), row.givenBack + " close:7 close:5 close:6");
    EXPECT_TRUE(bus.told.empty());
  }
}

}  // namespace
