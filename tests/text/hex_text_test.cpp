#include "text/hex_text.h"

#include <gtest/gtest.h>

// What is read from typed text is compared with a plain reading in fuzzing/typed_numbers.cpp.
TEST(HexText, AsTheWindowsShowIt) {
  EXPECT_EQ(HexText(0), "0");
  EXPECT_EQ(HexText(0x12ABCD), "12ABCD");
  EXPECT_EQ(HexText(-1), "FFFFFFFF");
  EXPECT_EQ(fileop::HexByte(9) + fileop::HexByte(255), "09FF");
  EXPECT_EQ(PaddedHex(0xA, 4) + PaddedHex(0x12345, 4), "000A12345");
}

TEST(CutAtNul, KeepsWhatStandsInFront) {
  EXPECT_EQ(CutAtNul({"C:\\Win\0junk", 11}), "C:\\Win");
  EXPECT_EQ(CutAtNul("plain"), "plain");
}

TEST(LowerCase, ChangesLettersOnly) { EXPECT_EQ(LowerCase("@AZ[`az{\xC3"), "@az[`az{\xC3"); }

TEST(WholeDecimal, TakesDigitsThatFitAndNothingElse) {
  EXPECT_EQ(WholeDecimal("4294967295"), 4294967295U);
  for (const char* none : {"", "4294967296", "-1", "+1", " 1", "1 ", "0x1"}) {
    EXPECT_EQ(WholeDecimal(none), std::nullopt) << none;
  }
}
