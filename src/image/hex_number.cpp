#include "image/hex_number.h"

#include <algorithm>

std::string HexText(std::int32_t value) {
  auto rest = static_cast<std::uint32_t>(value);
  std::string text;
  do {
    text += "0123456789ABCDEF"[rest % 16];
    rest /= 16;
  } while (rest != 0);
  std::reverse(text.begin(), text.end());
  return text;
}

std::string fileop::HexByte(int value) { return (value > 15 ? "" : "0") + HexText(value); }
