#include "terminal/arguments.h"

#include <gtest/gtest.h>

#include <cstdlib>

TEST(EnvironmentText, IsUtf8WhateverTheCodePageHolds) {
  ASSERT_EQ(_wputenv(L"ISP_WRITER_TRY=Prüfstand 溫度.vcd"), 0);
  EXPECT_EQ(terminal::EnvironmentText("ISP_WRITER_TRY"), "Prüfstand 溫度.vcd");
  EXPECT_EQ(terminal::EnvironmentText("ISP_WRITER_TRY_NONE"), "");
}
