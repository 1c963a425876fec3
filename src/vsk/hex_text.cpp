#include "vsk/hex_text.h"

#include <algorithm>
#include <cctype>

namespace Module1 {

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::size_t Length(std::string_view text) {
  const auto begins = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins));
}

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return upper;
}

std::optional<int> HexDigitValue(char c) {
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= '0' && c <= '9') return c - '0';
  return std::nullopt;
}

std::optional<int> HexByteValue(std::string_view text) {
  const std::string digits = UpperCase(Trim(text));
  if (digits.empty()) return std::nullopt;
  const auto high = HexDigitValue(digits.front());
  const auto low = HexDigitValue(digits.back());
  if (!high || !low) return std::nullopt;
  return 16 * *high + *low;
}

std::optional<std::int32_t> HexWordValue(std::string_view text) {
  text = Trim(text);
  if (text.size() < 3) return std::nullopt;
  std::int32_t value = 0;
  for (const char c : {text[0], text[1], text[2], text.back()}) {
    const auto digit = HexDigitValue(c);
    if (!digit) return std::nullopt;
    value = 16 * value + *digit;
  }
  return value;
}

}  // namespace Module1
