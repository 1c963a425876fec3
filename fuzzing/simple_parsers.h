// The second opinion: slow and plain readings of the same texts, one character at a time.
#pragma once

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

namespace simple {

/// 0..15; -1 for any other character than a digit or a letter A-F, and a-f when `anyCase`.
inline int Digit(char c, bool anyCase = false) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (anyCase && c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

/// The `digits` upper-case digits from `at` on; -1 when one is wrong.
inline int Hex(const std::string& text, std::size_t at, int digits) {
  int number = 0;
  for (int i = 0; i < digits; ++i) {
    const int digit = Digit(text.at(at + static_cast<std::size_t>(i)));
    if (digit < 0) return -1;
    number = 16 * number + digit;
  }
  return number;
}

/// All of the text as a hexadecimal number below 2^32.
inline std::optional<unsigned long> WholeHex(const std::string& text) {
  unsigned long number = 0;
  for (const char c : text) {
    if (Digit(c, true) < 0) return std::nullopt;
    number = 16 * number + static_cast<unsigned long>(Digit(c, true));
    if (number > 0xFFFFFFFF) return std::nullopt;
  }
  if (text.empty()) return std::nullopt;
  return number;
}

/// The digits at the start as a mask, 0 outside 1..255.
inline int Mask(const std::string& text) {
  int mask = 0;
  for (const char c : text) {
    if (Digit(c, true) < 0) break;
    mask = 16 * mask + Digit(c, true);
    if (mask > 255) return 0;
  }
  return mask;
}

/// The decimal number at the start, 0 when there is none, rounded; nothing outside 16 bits.
inline std::optional<int> Decimal(const std::string& text) {
  const auto digits = [&](std::size_t& at) {
    const std::size_t begin = at;
    while (at < text.size() && text[at] >= '0' && text[at] <= '9') ++at;
    return at - begin;
  };
  const auto skipSign = [&](std::size_t& at) {
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
  };
  std::size_t at = 0;
  skipSign(at);
  std::size_t found = digits(at);
  if (at < text.size() && text[at] == '.') found += digits(++at);
  if (found == 0) return 0;
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    std::size_t exponent = at + 1;
    skipSign(exponent);
    if (digits(exponent) > 0) at = exponent;
  }
  errno = 0;
  const double read = std::strtod(text.substr(0, at).c_str(), nullptr);
  if (errno == ERANGE && read == 0) return std::nullopt;  // too small for a double
  const double value = std::rint(read);
  if (value < -32768 || value > 32767) return std::nullopt;
  return static_cast<int>(value);
}

inline std::string Trim(std::string text, const std::string& blanks) {
  while (!text.empty() && blanks.find(text.back()) != std::string::npos) text.pop_back();
  while (!text.empty() && blanks.find(text.front()) != std::string::npos) text.erase(0, 1);
  return text;
}

/// The fields of a comma-separated text, trimmed and without their quotes.
inline std::vector<std::string> Fields(const std::string& text) {
  std::vector<std::string> fields;
  std::size_t at = 0;
  const auto stands = [&](const char* any) {
    return at < text.size() && std::string(any).find(text[at]) != std::string::npos;
  };
  while (at < text.size()) {
    std::string field;
    while (stands(" \t")) ++at;
    const bool quoted = stands("\"");
    if (quoted) {
      for (++at; at < text.size() && !stands("\""); ++at) field += text[at];
      if (at < text.size()) ++at;
    }
    for (; at < text.size() && !stands(",\r\n"); ++at) {
      if (!quoted) field += text[at];
    }
    at += text.compare(at, 2, "\r\n") == 0 ? 2 : 1;
    fields.push_back(Trim(field, " \t"));
  }
  return fields;
}

}  // namespace simple
