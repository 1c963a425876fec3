#include "vsk/entry_parameters.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/temp_folder.h"

namespace {

/// The boxes of the window, from the top, with "|" between them.
fileop::SecurityEntry Typed(const std::string& boxes) {
  std::array<std::string, 6> texts;
  std::istringstream in(boxes);
  for (std::string& text : texts) std::getline(in, text, '|');
  return {texts[0], texts[1], {texts[2], texts[3], texts[4], texts[5]}};
}

/// What is read from the file is compared with a plain reading in fuzzing/security_codes.cpp.
TEST(EntryParameters, TheSecurityCheck) {
  const TempFolder folder;
  const std::string wrongByte = "please input two word HEX number:(00-FF)";
  const std::string wrongCount = "please input two word HEX number:(01-04)";
  struct Case {
    const char* typed;
    std::string message;
    std::string file = "";  // empty when the entry is refused, and the file is removed
  };
  const Case cases[] = {{"94|01|5a", "", std::string("\x94\x01\x5A\0", 4)},
                        {" 94 |02|5A|A5|zz", "", "\x94\x02\x5A\xA5"},
                        {"9|05|5A", wrongByte},
                        {"\u00E9|01|5A", wrongByte},
                        {"9G|01|5A", ""},
                        {"94||5A", ""},
                        {"94|1|5A", wrongCount},
                        {"94|05|5A", wrongCount},
                        {"94|00|5A", wrongCount},
                        {"94|02|5A|123", wrongByte},
                        {"94|02|5A|G1", ""}};
  for (const Case& c : cases) {
    const auto path = folder.Write("security.cod", "");
    const auto check = fileop::CheckSecurityEntry(Typed(c.typed), path);
    EXPECT_EQ(check.Ok(), !c.file.empty()) << c.typed;
    EXPECT_EQ(check.Reason(), c.message) << c.typed;
    EXPECT_EQ(std::filesystem::exists(path), check.Ok()) << c.typed;
    EXPECT_EQ(folder.Read("security.cod"), c.file) << c.typed;
  }
}

}  // namespace
