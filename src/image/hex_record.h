// Where the fields of one Intel HEX record stand.
#pragma once

#include <cstdint>
#include <string_view>

#include "text/hex_text.h"

namespace loadfile {

struct HexRecord {
  static constexpr std::size_t kHead = 9;  // characters: start code, byte count, address, type
  static constexpr std::size_t kTail = 4;  // checksum, line end

  /// The record that begins at `begin`. Its numbers mean nothing when `text` does not hold them as
  /// digits.
  HexRecord(std::string_view text, std::size_t begin) : at(begin) {
    if (text.size() - begin < kHead) return;
    const auto byteAt = [&](std::size_t i) {
      return HexDigit(text[begin + i]) * 16 + HexDigit(text[begin + i + 1]);
    };
    count = static_cast<std::size_t>(byteAt(1)) & 0xFF;
    address = byteAt(3) * 256 + byteAt(5);
  }

  std::size_t Type() const { return at + kHead - 2; }
  std::size_t Data() const { return at + kHead; }
  std::size_t Checksum() const { return Data() + 2 * count; }
  std::size_t LineEnd() const { return Checksum() + kTail - 2; }
  std::size_t End() const { return LineEnd() + 2; }
  /// Address of its last byte; one below `address` for a record without data.
  std::int32_t Last() const { return address + static_cast<std::int32_t>(count) - 1; }

  std::size_t at;            // of the start code
  std::size_t count = 0;     // data bytes, 0..255
  std::int32_t address = 0;  // of the first one
};

}  // namespace loadfile
