// The ISP protocol of the VSK chips: command bytes and fixed addresses, as they go out on the wire.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tongxun {

/// Sent to the command address C, as the first byte of a frame.
inline constexpr std::int16_t kEraseAll = 0x68;      // S C 68 00 P
inline constexpr std::int16_t kErasePage = 0x30;     // S C 30 page P
inline constexpr std::int16_t kQuit = 0x48;          // S C 48 00 P
inline constexpr std::int16_t kResetCrc = 0xD0;      // S C D0 P
inline constexpr std::int16_t kProgramBank0 = 0xA0;  // S C A0 page P, the only bank or the first
inline constexpr std::int16_t kProgramBank1 = 0xA1;  // S C A1 page P
inline constexpr std::int16_t kSelectPage = 0x00;    // S C 00 page P

/// Sent to the data address A, in front of the data bytes.
inline constexpr std::int16_t kData = 0x00;  // S A 00 data.. P

/// The chip's CRC: 5 bytes, the last two being the CRC, high byte first.
inline constexpr int kCrcReadAddress = 0x97;  // read form of 0x96, whatever A is
inline constexpr int kCrcReadBytes = 5;

/// A page number is one byte.
inline constexpr std::int32_t kLastPage = 255;
inline constexpr std::int32_t kErasePageBytes = 128;

/// Where the ISP entry parameters stand, in "Initial/security.cod" byte by byte and in `IspParams`.
inline constexpr std::size_t kEntryAddress = 0;    // the slave address A
inline constexpr std::size_t kEntryCodeCount = 1;  // the number n of security codes
inline constexpr std::size_t kEntryFirstCode = 2;  // the n codes; a 0 byte behind a single one
inline constexpr std::size_t kEntryCells = 11;     // taken at most
inline constexpr int kMostCodes = kEntryCells - kEntryFirstCode;

}  // namespace tongxun
