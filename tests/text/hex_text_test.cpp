#include "text/hex_text.h"

#include <gtest/gtest.h>

// What is read from typed text is compared with a plain reading in fuzzing/typed_numbers.cpp.
TEST(HexText, AsTheWindowsShowIt) {
  EXPECT_EQ(HexText(0), "0");
  EXPECT_EQ(HexText(0x12ABCD), "12ABCD");
  EXPECT_EQ(HexText(-1), "FFFFFFFF");
  EXPECT_EQ(fileop::HexByte(9) + fileop::HexByte(255), "09FF");
}

TEST(CutAtNul, KeepsWhatStandsInFront) {
  EXPECT_EQ(CutAtNul({"C:\\Win\0junk", 11}), "C:\\Win");
  EXPECT_EQ(CutAtNul("plain"), "plain");
}
