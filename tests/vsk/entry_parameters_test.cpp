#include "vsk/entry_parameters.h"

#include <gtest/gtest.h>

#include "support/temp_folder.h"

/// What is read from the file is compared with a plain reading in fuzzing/security_codes.cpp.
TEST(EntryParameters, TheSecurityCheck) {
  const TempFolder folder;
  const std::string wrongByte = "please input two word HEX number:(00-FF)";
  const std::string wrongCount = "please input two word HEX number:(01-04)";
  struct Case {
    fileop::SecurityEntry typed;
    std::string message;
    std::string file = "";  // empty when the entry is refused, and the file is removed
  };
  const Case cases[] = {{{"94", "01", {"5a"}}, "", std::string("\x94\x01\x5A\0", 4)},
                        {{" 94 ", "02", {"5A", "A5", "zz"}}, "", "\x94\x02\x5A\xA5"},
                        {{"9", "05", {"5A"}}, wrongByte},
                        {{"\u00E9", "01", {"5A"}}, wrongByte},
                        {{"9G", "01", {"5A"}}, ""},
                        {{"94", "", {"5A"}}, ""},
                        {{"94", "1", {"5A"}}, wrongCount},
                        {{"94", "05", {"5A"}}, wrongCount},
                        {{"94", "00", {"5A"}}, wrongCount},
                        {{"94", "02", {"5A", "123"}}, wrongByte},
                        {{"94", "02", {"5A", "G1"}}, ""}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.typed.address + "|" + c.typed.count + "|" + c.typed.codes[0]);
    const auto path = folder.Write("security.cod", "");
    const auto check = fileop::CheckSecurityEntry(c.typed, path);
    EXPECT_EQ(check.Ok(), !c.file.empty());
    EXPECT_EQ(check.Reason(), c.message);
    EXPECT_EQ(std::filesystem::exists(path), check.Ok());
    EXPECT_EQ(folder.Read("security.cod"), c.file);
  }
}
