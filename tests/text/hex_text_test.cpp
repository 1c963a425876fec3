#include "text/hex_text.h"

#include <gtest/gtest.h>

TEST(HexText, AsTheWindowsShowIt) {
  EXPECT_EQ(HexText(0), "0");
  EXPECT_EQ(HexText(0x12ABCD), "12ABCD");
  EXPECT_EQ(HexText(-1), "FFFFFFFF");
  EXPECT_EQ(fileop::HexByte(9) + fileop::HexByte(255), "09FF");
}

TEST(HexText, NumbersThatWereTyped) {
  EXPECT_EQ(WholeHex("37a"), 0x37AU);
  EXPECT_EQ(WholeHex("FFFFFFFF"), 0xFFFFFFFFU);
  for (const char* wrong : {"", "0x37", "+3", "-3", "3 ", "100000000", "G"}) {
    EXPECT_EQ(WholeHex(wrong), std::nullopt) << wrong;
  }
  EXPECT_EQ(WholeHex(std::string("12\0", 3)), std::nullopt) << "nothing behind a NUL";

  EXPECT_EQ(Module1::HexByteValue("a5"), 165);
  EXPECT_EQ(Module1::HexByteValue(" 5"), 0x55);
  for (const char* wrong : {"9G", "", "  ", "g0", "-1"}) {
    EXPECT_EQ(Module1::HexByteValue(wrong), std::nullopt) << wrong;
  }
  EXPECT_EQ(Module1::HexWordValue("FF00"), 65280);
  EXPECT_EQ(Module1::HexWordValue(" 1234 "), 0x1234);
  for (const char* wrong : {"ff00", "12G4", "", "12"}) {
    EXPECT_EQ(Module1::HexWordValue(wrong), std::nullopt) << wrong;
  }
}
