// A matcher for texts of which a test names the parts that count.
#pragma once

#include <gmock/gmock.h>

#include <sstream>
#include <string>
#include <vector>

/// Holds each of the parts, which are separated by "|".
inline testing::Matcher<std::string> HasParts(const std::string& parts) {
  std::vector<testing::Matcher<std::string>> all;
  std::istringstream rest(parts);
  for (std::string part; std::getline(rest, part, '|');) all.push_back(testing::HasSubstr(part));
  return testing::AllOfArray(all);
}
