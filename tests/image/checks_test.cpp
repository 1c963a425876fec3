#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

#include "image/code_buffers.h"
#include "image/crc16.h"
#include "text/hex_text.h"
#include "image/page_view.h"
#include "support/images.h"

namespace {

struct ChecksTest : testing::Test {
  std::unique_ptr<tongxun::CodeBuffers> b = std::make_unique<tongxun::CodeBuffers>();
};

void Put(tongxun::VskCells& cells, std::int32_t& maximum, std::string_view text) {
  std::copy(text.begin(), text.end(), cells.begin());
  maximum = static_cast<std::int32_t>(text.size()) - 1;
}

TEST_F(ChecksTest, ImageInOneBuffer) {
  struct Case {
    std::string_view image;
    int crc, sum;
  };
  for (const Case& c : {Case{"123456789", 0xAEE7, 0x01DD},
                        {std::string_view("\0", 1), 0xFD02, 0},
                        {"\xFF", 0xFF00, 0xFF},
                        {"", 0xFFFF, 0}}) {
    Put(b->CodeBuffer, b->CodeMax, c.image);
    b->CheckCode();
    EXPECT_EQ(b->CodeCrc, c.crc) << c.image;
    EXPECT_EQ(b->CodeSum, c.sum) << c.image;
  }
  b->CodeBuffer.fill(0xFF);
  b->CodeMax = 0xFFFF;
  b->CheckCode();
  EXPECT_EQ(b->CodeCrc, 0x0000);
}

TEST_F(ChecksTest, BanksAreLaidEndToEnd) {
  Put(b->CodeBank0, b->CodeBank0Max, "12345");
  Put(b->CodeBank1, b->CodeBank1Max, "6789");
  b->CrcBanks();
  b->SumBanks();
  EXPECT_EQ(b->CodeCrc, 0xAEE7);
  EXPECT_EQ(b->CodeSum, 0x01DD);
}

TEST_F(ChecksTest, TheTablesEqualTheBitStepForEveryLengthAndRegister) {
  for (std::size_t length = 0; length <= 40; ++length) {
    for (const unsigned start : {0xFFFFU, 0x0000U, 0x8001U, 0x1234U}) {
      const auto image = Image(length, start + static_cast<unsigned>(length));
      auto bits = static_cast<std::uint16_t>(start);
      for (const std::uint8_t byte : image) {
        for (unsigned k = 8; k-- > 0;) bits = tongxun::CrcBit(bits, byte >> k & 1U);
      }
      EXPECT_EQ(tongxun::CrcBytes(static_cast<std::uint16_t>(start), image), bits)
          << length << " bytes from " << start;
    }
  }
}

TEST_F(ChecksTest, TheTablesEqualTheBitStepForEveryByte) {
  std::uint16_t bits = tongxun::kCrcStart;
  std::uint16_t bytes = tongxun::kCrcStart;
  for (unsigned i = 0; i < 256; ++i) {
    const auto byte = static_cast<std::uint8_t>(i);
    // The same byte at each of the eight places of a slice, behind a different register each time.
    const std::array<std::uint8_t, 8> slice{byte, byte, byte, byte, byte, byte, byte, byte};
    for (unsigned k = 64; k-- > 0;) bits = tongxun::CrcBit(bits, byte >> (k % 8) & 1U);
    bytes = tongxun::CrcBytes(bytes, slice);
    ASSERT_EQ(bits, bytes) << i;
  }
}

TEST_F(ChecksTest, RtdBankSumsCoverAllOf64KiBOnly) {
  b->RtdBank1Buffer.fill(0xFF);
  b->SumRtdBank(1);
  EXPECT_EQ(b->RtdBankSum, 0x0000);
  b->RtdBank2Buffer[65535] = 7;
  b->RtdBank2Buffer[65536] = 100;
  for (const int bank : {2, 0, -1}) {
    b->RtdBankSum = 0;
    b->SumRtdBank(bank);
    EXPECT_EQ(b->RtdBankSum, 7) << bank;
  }
}

TEST_F(ChecksTest, NothingMatchesBeforeTheChipWasRead) {
  b->CodeCrc = 0xFFFF;
  EXPECT_FALSE(b->CrcMatches(-1));
  EXPECT_TRUE(b->CrcMatches(0xFFFF));
}

TEST(HexText, AsTheWindowsShowIt) {
  EXPECT_EQ(HexText(0), "0");
  EXPECT_EQ(HexText(0x12ABCD), "12ABCD");
  EXPECT_EQ(HexText(-1), "FFFFFFFF");
  EXPECT_EQ(fileop::HexByte(9), "09");
  EXPECT_EQ(fileop::HexByte(255), "FF");
}

struct Display : PageView {
  std::string text;
  void ShowData(std::string_view shown) override { text = shown; }
};

std::string RepeatedByte(std::string_view byte) {
  std::string line;
  for (int i = 0; i < 16; ++i) line += std::string(byte) + " ";
  return line + "\r\n";
}

TEST_F(ChecksTest, PagesAsHexDumps) {
  Display display;
  b->CodeBuffer.fill(0xFF);
  ShowLoadPage(*b, 0, display);
  std::string expected = "this is 0  page (Load Hex File Code)\r\n";
  for (const char* address :
       {"0000", "00010", "00020", "00030", "00040", "00050", "00060", "00070", "00080", "00090",
        "000A0", "000B0", "000C0", "000D0", "000E0", "000F0"}) {
    expected += address + std::string("    ") + RepeatedByte("FF");
  }
  EXPECT_EQ(display.text, expected);

  b->CodeBuffer[0xFFFF] = 0x0A;
  ShowLoadPage(*b, 0xFF, display);
  EXPECT_EQ(display.text.substr(0, 39), "this is FF  page (Load Hex File Code)\r\n");
  EXPECT_TRUE(display.text.ends_with("FF 0A \r\n"));

  std::array<std::int32_t, 513> received{};
  received[17] = 0xAB;
  ShowReadPage(received, 0x12, display);
  EXPECT_EQ(display.text.substr(0, 34), "this is 12  page (Read Page Code)\r");
  EXPECT_NE(display.text.find("0001210    00 AB 00 "), std::string::npos);
}

}  // namespace
