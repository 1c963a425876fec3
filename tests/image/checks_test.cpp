#include <gtest/gtest.h>

#include <vector>

#include "image/cells.h"
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
  const std::string_view digits = "123456789";
  const std::vector<std::uint8_t> check(digits.begin(), digits.end());
  EXPECT_EQ(tongxun::CrcBytes(tongxun::kCrcStart, check), 0xAEE7);
  EXPECT_EQ(tongxun::SumBytes(0, check), 0x01DD);
  EXPECT_EQ(tongxun::SumBytes(0xFF00, Image(0)), 0xFF00);
  EXPECT_EQ(tongxun::UsedCells(check, -1).size(), 0U);
  EXPECT_EQ(tongxun::UsedCells(check, 2).size(), 3U);
}

TEST(PageText, AsHexDump) {
  std::vector<std::uint8_t> bytes(256, 0xFF);
  std::string row;
  for (int i = 0; i < 16; ++i) row += "FF ";
  std::string expected = "this is 0  page (Load Hex File Code)\r\n0000    " + row + "\r\n";
  for (const char digit : std::string_view("123456789ABCDEF")) {
    expected += std::string("000") + digit + "0    " + row + "\r\n";
  }
  EXPECT_EQ(PageText<std::uint8_t>(bytes, 0, " (Load Hex File Code)"), expected);

  bytes[0x1F] = 0x0A;
  const std::string page = PageText<std::uint8_t>(bytes, 0x12, "");
  EXPECT_TRUE(page.starts_with("this is 12  page\r\n0001200    FF "));
  EXPECT_NE(page.find("FF 0A \r\n0001220    FF"), std::string::npos);
}

}  // namespace
