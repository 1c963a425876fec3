// The RTD2120's ISP protocol in numbers: its two slaves, their registers and bits.
#pragma once

#include <cstddef>

namespace tongxun2120 {

/// Address bytes, in their write form.
inline constexpr int kIspSlave = 0x94;   // ISP registers
inline constexpr int kAddrSlave = 0x96;  // address registers, written only

/// Registers of the ISP slave.
inline constexpr int kIspControl = 0x90;
inline constexpr int kIspEntry = 0x36;
inline constexpr int kPageData = 0x94;
inline constexpr int kCrcControl = 0xA2;
inline constexpr int kCrcResult = 0xA3;

/// Values of the ISP control register.
inline constexpr int kFirstBank = 0x40;
inline constexpr int kSecondBank = 0x60;
inline constexpr int kErase = 0xC0;
inline constexpr int kLeave = 0x00;

/// Its status bits, as it reads.
inline constexpr int kErasing = 0x80;
inline constexpr int kProgramming = 0x10;
inline constexpr int kSettingCrcRange = 0x08;

/// Bits of the CRC control register: written, and as it reads.
inline constexpr int kCrcRequest = 0x80;
inline constexpr int kCrcRunning = 0x80;
inline constexpr int kCrcDone = 0x40;

/// Registers of the address slave.
inline constexpr int kStartAddress = 0x92;
inline constexpr int kCrcEndAddress = 0xA0;

/// A page transaction: address byte, register, data.
inline constexpr std::size_t kPageBytes = 256;
inline constexpr std::size_t kFirstData = 2;
inline constexpr int kPageTransfer = 258;

}  // namespace tongxun2120
