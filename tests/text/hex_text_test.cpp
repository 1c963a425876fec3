#include "text/hex_text.h"

#include <gtest/gtest.h>

// What is read from typed text is compared with a plain reading in fuzzing/typed_numbers.cpp.
TEST(CutAtNul, KeepsWhatStandsInFront) {
  EXPECT_EQ(CutAtNul({"C:\\Win\0junk", 11}), "C:\\Win");
  EXPECT_EQ(CutAtNul("plain"), "plain");
}
