// CRC-8 with polynomial x^8 + x^2 + x + 1 (0x07), initial value 0, not reflected, no final XOR: the
// SMBus packet error code, check value 0xF4 over the ASCII characters 123456789.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace tongxun2120 {

/// What one byte does to a register of 0.
constexpr std::array<std::uint8_t, 256> Crc8Table() {
  std::array<std::uint8_t, 256> table{};
  for (unsigned byte = 0; byte < table.size(); ++byte) {
    unsigned crc = byte;
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 0x80U) != 0 ? (crc << 1) ^ 0x07U : crc << 1;
    table[byte] = static_cast<std::uint8_t>(crc);
  }
  return table;
}

inline constexpr auto kCrc8Table = Crc8Table();

/// Feeds one byte, most significant bit first.
constexpr std::uint8_t Crc8Byte(std::uint8_t crc, std::uint8_t byte) {
  return kCrc8Table[crc ^ byte];
}

/// Of bytes behind those that `crc` is of.
constexpr std::uint8_t Crc8(std::span<const std::uint8_t> bytes, std::uint8_t crc = 0) {
  for (const std::uint8_t byte : bytes) crc = Crc8Byte(crc, byte);
  return crc;
}

}  // namespace tongxun2120
