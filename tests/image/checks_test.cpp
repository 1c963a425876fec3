#include <gtest/gtest.h>

#include <vector>

#include "image/crc16.h"
#include "image/page_text.h"
#include "support/images.h"

namespace {

TEST(Crc16, TheTablesEqualTheBitStep) {
  // Every byte at each of the eight places of a slice, behind a different register each time, and
  // one odd length behind whole slices.
  std::vector<std::uint8_t> image = Image(13);
  for (int byte = 0; byte < 256; ++byte) {
    image.insert(image.end(), 8, static_cast<std::uint8_t>(byte));
  }
  for (const std::uint16_t start : std::initializer_list<std::uint16_t>{0xFFFF, 0, 0x1234}) {
    std::uint16_t bits = start;
    for (const std::uint8_t byte : image) {
      for (unsigned k = 8; k-- > 0;) bits = tongxun::CrcBit(bits, byte >> k & 1U);
    }
    EXPECT_EQ(tongxun::CrcBytes(start, image), bits) << start;
  }
}

TEST(PageText, AsHexDump) {
  std::vector<std::uint8_t> bytes(256, 0xFF);
  EXPECT_TRUE(PageText<std::uint8_t>(bytes, 0, "").starts_with("this is 0  page\r\n0000    FF "));
  bytes[0x1F] = 0x0A;
  std::string expected = "this is 12  page (Read Page Code)\r\n";
  for (const char digit : std::string_view("0123456789ABCDEF")) {
    expected += std::string("00012") + digit + "0    ";
    for (int i = 0; i < 15; ++i) expected += "FF ";
    expected += digit == '1' ? "0A \r\n" : "FF \r\n";
  }
  EXPECT_EQ(PageText<std::uint8_t>(bytes, 0x12, " (Read Page Code)"), expected);
}

}  // namespace
