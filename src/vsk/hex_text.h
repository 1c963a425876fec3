// Turns the operator's hexadecimal answers into numbers. Nothing where a character is no digit;
// the callers have already checked the length.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Module1 {

/// Upper case only: "0".."9", "A".."F".
std::optional<int> HexDigitValue(char c);

/// First and last character of the trimmed text, in either case: 0..255.
std::optional<int> HexByteValue(std::string_view text);

/// Characters 1, 2, 3 and the last one of the trimmed text, upper case only: 0..65535.
std::optional<std::int32_t> HexWordValue(std::string_view text);

/// The text without leading and trailing blanks.
std::string_view Trim(std::string_view text);

/// Number of characters of a UTF-8 text.
std::size_t Length(std::string_view text);

/// The text with its letters in upper case.
std::string UpperCase(std::string_view text);

}  // namespace Module1
