#include "image/crc16.h"

#include <array>

namespace tongxun {
namespace {

/// What one byte does to a register of 0, made from the bit step.
constexpr std::array<std::uint16_t, 256> ByteTable() {
  std::array<std::uint16_t, 256> table{};
  for (unsigned byte = 0; byte < table.size(); ++byte) {
    for (unsigned bit = 8; bit-- > 0;) table[byte] = CrcBit(table[byte], (byte >> bit) & 1U);
  }
  return table;
}

constexpr auto kByteTable = ByteTable();

}  // namespace

std::uint16_t CrcBytes(std::uint16_t crc, std::span<const std::uint8_t> bytes) {
  for (const std::uint8_t byte : bytes) {
    crc = static_cast<std::uint16_t>((crc << 8) ^ kByteTable[(crc >> 8) ^ byte]);
  }
  return crc;
}

}  // namespace tongxun
