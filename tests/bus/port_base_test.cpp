// The line driver and the port: which port a register access belongs to.
#include <gtest/gtest.h>

#include "support/recording_port.h"

namespace {

/// Writes down the ports it is told to use, and the accesses, as words.
class PortLog final : public PortIo {
 public:
  std::string words;

  void UsePort(std::uint32_t base) override { Word("use", base); }
  void DlPortWritePortUchar(std::uint32_t port, std::uint8_t) override { Word("write", port); }
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t port) override {
    Word("read", port);
    return 0;
  }

 private:
  void Word(const char* what, std::uint32_t port) {
    words += std::string(words.empty() ? "" : " ") + what + ":" + std::to_string(port);
  }
};

}  // namespace

TEST(PortBase, LinesAreReleasedOnlyOnAPortInUse) {
  PortLog log;
  IicPort port(log);
  port.PortBase = 100;
  port.ReleaseLines();
  EXPECT_EQ(log.words, "");
  port.SetSdaLow();
  log.words.clear();
  port.ReleaseLines();
  EXPECT_EQ(log.words, "write:102 write:100") << "SCL before SDA: a STOP, not a START";
  port.PortBase = 200;
  port.ReleaseLines();
  EXPECT_EQ(log.words, "write:102 write:100");
}

TEST(PortBase, IsAnnouncedAtTheFirstAccessAfterItChanged) {
  PortLog log;
  IicPort port(log);
  port.BoardTable[0] = TraceBoard();
  port.InitPortShadows();
  EXPECT_EQ(log.words, "");

  port.PortBase = 100;
  port.SdaIsLow();
  port.SetSdaLow();
  port.SetSclHigh();
  EXPECT_EQ(log.words, "use:100 read:101 write:100 write:102");

  // The new data register is the old control register.
  log.words.clear();
  port.PortBase = 102;
  port.SetSdaHigh();
  port.SetSclLow();
  EXPECT_EQ(log.words, "use:102 write:102 write:104");

  // Nothing is announced for an address that was never used.
  log.words.clear();
  port.PortBase = 0;
  port.PortBase = 102;
  port.SetSdaHigh();
  EXPECT_EQ(log.words, "write:102");
}
