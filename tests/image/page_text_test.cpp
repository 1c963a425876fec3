#include "image/page_text.h"

#include <gtest/gtest.h>

#include <vector>

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
