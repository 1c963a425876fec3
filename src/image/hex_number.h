// Hexadecimal texts as the windows show them.
#pragma once

#include <cstdint>
#include <string>

/// Upper case, no prefix, no leading zeros; a negative value as its 32-bit two's complement.
std::string HexText(std::int32_t value);

namespace fileop {

/// Exactly two upper-case digits. `value`: 0..255.
std::string HexByte(int value);

}  // namespace fileop
