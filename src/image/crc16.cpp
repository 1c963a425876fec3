#include "image/crc16.h"

#include <array>

namespace tongxun {
namespace {

using Table = std::array<std::uint16_t, 256>;

constexpr std::size_t kSlice = 8;  // bytes taken at once

constexpr std::uint16_t CrcByte(const Table& table, std::uint16_t crc, std::uint8_t byte) {
  return static_cast<std::uint16_t>((crc << 8) ^ table[(crc >> 8) ^ byte]);
}

/// Table k: what one byte and k zero bytes behind it do to a register of 0, made from the bit step.
constexpr std::array<Table, kSlice> Tables() {
  std::array<Table, kSlice> tables{};
  for (unsigned byte = 0; byte < tables[0].size(); ++byte) {
    std::uint16_t crc = 0;
    for (unsigned bit = 8; bit-- > 0;) crc = CrcBit(crc, (byte >> bit) & 1U);
    tables[0][byte] = crc;
  }
  for (std::size_t k = 1; k < kSlice; ++k) {
    for (std::size_t byte = 0; byte < tables[k].size(); ++byte) {
      tables[k][byte] = CrcByte(tables[0], tables[k - 1][byte], 0);
    }
  }
  return tables;
}

constexpr auto kTables = Tables();

}  // namespace

std::uint16_t CrcBytes(std::uint16_t crc, std::span<const std::uint8_t> bytes) {
  // The CRC is linear: each byte of a slice acts alone, as if zeros followed it, and the register
  // acts as if it were added to the slice's first two bytes.
  for (; bytes.size() >= kSlice; bytes = bytes.subspan(kSlice)) {
    unsigned next = kTables[7][bytes[0] ^ (crc >> 8)] ^ kTables[6][bytes[1] ^ (crc & 0xFFU)];
    for (std::size_t i = 2; i < kSlice; ++i) next ^= kTables[kSlice - 1 - i][bytes[i]];
    crc = static_cast<std::uint16_t>(next);
  }
  for (const std::uint8_t byte : bytes) crc = CrcByte(kTables[0], crc, byte);
  return crc;
}

}  // namespace tongxun
