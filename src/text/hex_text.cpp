#include "text/hex_text.h"

#include <algorithm>
#include <charconv>

namespace {

/// In UTF-8 every byte but those that continue a character.
bool BeginsCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }

std::optional<std::uint32_t> WholeNumber(std::string_view text, int base) {
  std::uint32_t value = 0;
  const char* end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, value, base);
  if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
  return value;
}

/// The text with the 26 letters from `first` on replaced by those from `instead` on.
std::string WithLetters(std::string_view text, char first, char instead) {
  std::string other(text);
  for (char& c : other) {
    if (c >= first && c <= first + 25) c = static_cast<char>(c - first + instead);
  }
  return other;
}

}  // namespace

std::string HexText(std::int32_t value) {
  std::array<char, 8> digits{};
  const auto end =
      std::to_chars(digits.begin(), digits.end(), static_cast<std::uint32_t>(value), 16);
  return UpperCase({digits.data(), end.ptr});
}

std::string PaddedHex(std::int32_t value, std::size_t digits) {
  std::string text = HexText(value);
  text.insert(0, digits - std::min(digits, text.size()), '0');
  return text;
}

std::optional<std::uint32_t> WholeHex(std::string_view text) { return WholeNumber(text, 16); }
std::optional<std::uint32_t> WholeDecimal(std::string_view text) { return WholeNumber(text, 10); }

std::string_view Trim(std::string_view text, std::string_view blanks) {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string UpperCase(std::string_view text) { return WithLetters(text, 'a', 'A'); }
std::string LowerCase(std::string_view text) { return WithLetters(text, 'A', 'a'); }

std::string Joined(std::span<const std::string> texts, std::string_view between) {
  std::string list;
  for (const std::string& text : texts) {
    if (!list.empty()) list += between;
    list += text;
  }
  return list;
}

std::string_view WithoutLastCharacter(std::string_view text) {
  const auto begin = std::find_if(text.rbegin(), text.rend(), BeginsCharacter);
  if (begin == text.rend()) return {};
  return text.substr(0, static_cast<std::size_t>(text.rend() - begin) - 1);
}

std::size_t Length(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), BeginsCharacter));
}

std::string fileop::HexByte(int value) { return PaddedHex(value, 2); }

namespace Module1 {
namespace {

std::optional<int> NumberOf(std::span<const char> digits) {
  int number = 0;
  for (const char c : digits) {
    const auto digit = HexDigitValue(c);
    if (!digit) return std::nullopt;
    number = 16 * number + *digit;
  }
  return number;
}

}  // namespace

std::optional<int> HexDigitValue(char c) {
  const int value = HexDigit(c);
  return value == kNoHexDigit ? std::nullopt : std::optional(value);
}

std::optional<int> HexByteValue(std::string_view text) {
  const std::string digits = UpperCase(Trim(text));
  if (digits.empty()) return std::nullopt;
  return NumberOf(std::array{digits.front(), digits.back()});
}

std::optional<std::int32_t> HexWordValue(std::string_view text) {
  text = Trim(text);
  if (text.size() < 3) return std::nullopt;
  return NumberOf(std::array{text[0], text[1], text[2], text.back()});
}

}  // namespace Module1
