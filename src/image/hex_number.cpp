#include "image/hex_number.h"

#include <algorithm>

namespace {

constexpr char kDigits[] = "0123456789ABCDEF";

}  // namespace

std::string HexText(std::int32_t value) {
  auto rest = static_cast<std::uint32_t>(value);
  std::string text;
  do {
    text += kDigits[rest % 16];
    rest /= 16;
  } while (rest != 0);
  std::reverse(text.begin(), text.end());
  return text;
}

std::string fileop::HexByte(int value) { return {kDigits[value / 16], kDigits[value % 16]}; }
