#include "bus/iic_port.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

class RecordingPort final : public PortIo {
 public:
  std::vector<std::pair<std::uint32_t, int>> accesses;  // -1 for a read
  std::uint8_t status = 0;

  void DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) override {
    accesses.emplace_back(port, value);
  }
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t port) override {
    accesses.emplace_back(port, -1);
    return status;
  }
};

using Accesses = std::vector<std::pair<std::uint32_t, int>>;

struct Fixture : testing::Test {
  RecordingPort io;
  IicPort port{io};

  Accesses Writes(const LineSpec& sdaOut, const LineSpec& sclOut) {
    port.InitPortShadows();
    port.BoardTable[0].SdaOut = sdaOut;
    port.BoardTable[0].SclOut = sclOut;
    port.SetSdaHigh();
    port.SetSdaLow();
    port.SetSclHigh();
    port.SetSclLow();
    return std::exchange(io.accesses, {});
  }
};

using IicPortTest = Fixture;

TEST_F(IicPortTest, EveryLineOperationIsOneWriteWithTheShadowInTheOtherBits) {
  struct Row {
    const char* what;
    LineSpec sdaOut, sclOut;
    int sdaHigh, sdaLow, sclHigh, sclLow;
  };
  const Row rows[] = {
      {"data bit 7, control bit 0, direct", {0, true, 0x80}, {0, true, 0x01}, 0xFF, 0x7F, 1, 0},
      {"data bit 0 direct, control inverted", {0, true, 0x01}, {0, false, 0x01}, 0x7F, 0x7E, 0, 1},
      {"data bit 7 inverted, control bit 3", {0, false, 0x80}, {0, true, 0x08}, 0x7F, 0xFF, 8, 0},
      {"addresses play no part", {0x278, true, 0x80}, {0x27A, true, 0x04}, 0xFF, 0x7F, 4, 0},
      {"unfilled row", {}, {}, 0x7F, 0x7F, 0, 0},
  };
  for (const Row& row : rows) {
    const Accesses expected{
        {0x378, row.sdaHigh}, {0x378, row.sdaLow}, {0x37A, row.sclHigh}, {0x37A, row.sclLow}};
    EXPECT_EQ(Writes(row.sdaOut, row.sclOut), expected) << row.what;
  }
}

TEST_F(IicPortTest, SamplesSdaWithTheMaskAndThePolarity) {
  struct Row {
    LineSpec sdaIn;
    std::uint8_t status;
    bool low;
  };
  const Row rows[] = {
      {{0, true, 0x40}, 0x40, true},   {{0, true, 0x40}, 0xBF, false},
      {{0, false, 0x40}, 0x40, false}, {{0, false, 0x40}, 0xBF, true},
      {{0, true, 0x80}, 0x80, true},   {{}, 0xFF, true},
  };
  for (const Row& row : rows) {
    port.BoardTable[0].SdaIn = row.sdaIn;
    io.status = row.status;
    EXPECT_EQ(port.SdaIsLow(), row.low) << row.sdaIn.mask << " " << int{row.status};
    EXPECT_EQ(std::exchange(io.accesses, {}), (Accesses{{0x379, -1}}));
  }
}

TEST_F(IicPortTest, AChangedBoardOrAddressCountsAtTheNextCall) {
  port.InitPortShadows();
  port.BoardTable[20].SdaOut = {0, true, 0x80};
  port.SetSdaHigh();
  port.CurrentBoard = 20;
  port.SetSdaHigh();
  port.PortBase = 0xEC00;
  port.SetSclLow();
  EXPECT_EQ(io.accesses, (Accesses{{0x378, 0x7F}, {0x378, 0xFF}, {0xEC02, 0}}));
}

}  // namespace
