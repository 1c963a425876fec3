// Hexadecimal and other small texts: what the windows show, what files hold, what operators type.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

inline constexpr std::string_view kHexDigits = "0123456789ABCDEF";
inline constexpr int kNoHexDigit = -1;

/// The value of each character as a hexadecimal digit, upper case only; `kNoHexDigit` for others.
inline constexpr auto kHexDigitValues = [] {
  std::array<std::int8_t, 256> values{};
  values.fill(kNoHexDigit);
  for (std::size_t i = 0; i < kHexDigits.size(); ++i) {
    values[static_cast<unsigned char>(kHexDigits[i])] = static_cast<std::int8_t>(i);
  }
  return values;
}();

constexpr int HexDigit(char c) { return kHexDigitValues[static_cast<unsigned char>(c)]; }

/// 0..255, of two characters that are known to be 0-9 or A-F: without a table, so that a processor
/// can take many at a time.
constexpr std::uint8_t KnownHexByte(const char* digits) {
  const auto value = [](char c) { return c <= '9' ? c - '0' : c - 'A' + 10; };
  return static_cast<std::uint8_t>(value(digits[0]) * 16 + value(digits[1]));
}

/// Upper case, no prefix, no leading zeros; a negative value as its 32-bit two's complement.
std::string HexText(std::int32_t value);
/// The same, with leading zeros up to `digits`.
std::string PaddedHex(std::int32_t value, std::size_t digits);

/// The whole text, digits in either case and nothing else, as a hexadecimal number. Nothing when it
/// is none or when it does not fit 32 bits.
std::optional<std::uint32_t> WholeHex(std::string_view text);
/// The same for a decimal number.
std::optional<std::uint32_t> WholeDecimal(std::string_view text);

/// The text without leading and trailing `blanks`.
std::string_view Trim(std::string_view text, std::string_view blanks = " ");

/// The part before the first NUL character, or the whole text when it holds none.
inline std::string_view CutAtNul(std::string_view text) { return text.substr(0, text.find('\0')); }
/// The same for a line feed.
inline std::string_view FirstLine(std::string_view text) { return text.substr(0, text.find('\n')); }

/// The text with its letters a-z in upper case.
std::string UpperCase(std::string_view text);
/// The text with its letters A-Z in lower case.
std::string LowerCase(std::string_view text);

/// "one, two, three"
std::string Joined(std::span<const std::string> texts, std::string_view between = ", ");

/// A UTF-8 text without its last character.
std::string_view WithoutLastCharacter(std::string_view text);

/// Number of characters of a UTF-8 text.
std::size_t Length(std::string_view text);

namespace fileop {

/// Exactly two upper-case digits. `value`: 0..255.
std::string HexByte(int value);

}  // namespace fileop

/// Turns the operator's hexadecimal answers into numbers. Nothing where a character is no digit;
/// the callers have already checked the length.
namespace Module1 {

/// Upper case only: "0".."9", "A".."F".
std::optional<int> HexDigitValue(char c);

/// First and last character of the trimmed text, in either case: 0..255.
std::optional<int> HexByteValue(std::string_view text);

/// Characters 1, 2, 3 and the last one of the trimmed text, upper case only: 0..65535.
std::optional<std::int32_t> HexWordValue(std::string_view text);

}  // namespace Module1
