// CRC-16 with polynomial 0x8005 (x^16 + x^15 + x^2 + 1), initial value 0xFFFF, not reflected, no
// final XOR: CRC-16/CMS, check value 0xAEE7 over the ASCII characters 123456789. The VSK chips
// compute the same over their flash.
#pragma once

#include <cstdint>
#include <span>

namespace tongxun {

inline constexpr std::uint16_t kCrcStart = 0xFFFF;

/// Steps the register by one input bit, 0 or 1.
constexpr std::uint16_t CrcBit(std::uint16_t crc, unsigned bit) {
  const unsigned feedback = bit ^ (crc >> 15);
  const unsigned shifted = (crc & 0x7FFFU) << 1;
  return static_cast<std::uint16_t>(feedback == 1 ? shifted ^ 0x8005U : shifted);
}

/// Feeds bytes in order, each most significant bit first, into the register `crc`.
std::uint16_t CrcBytes(std::uint16_t crc, std::span<const std::uint8_t> bytes);

}  // namespace tongxun
