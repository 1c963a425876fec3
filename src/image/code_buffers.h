// The six firmware images the tool holds, one cell per byte address, and the checks over them.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace tongxun {

using VskCells = std::array<std::uint8_t, 65537>;  // indices 0..65536
using RtdCells = std::array<std::uint8_t, 65541>;  // indices 0..65540

/// Lives as long as the process; no load clears a buffer. A maximum address is the address of the
/// image's last byte, -1 for an empty image; every range is inclusive, 0..maximum.
class CodeBuffers {
 public:
  VskCells CodeBuffer{};  // VSK830 image, and the staging area of a VSK630 pair
  std::int32_t CodeMax = 0;
  VskCells CodeBank0{};  // VSK630
  std::int32_t CodeBank0Max = 0;
  VskCells CodeBank1{};
  std::int32_t CodeBank1Max = 0;

  RtdCells RtdLoadBuffer{};  // staging of a load; later the bank being written
  std::int32_t RtdLoadMax = 0;
  RtdCells RtdBank1Buffer{};
  std::int32_t Bank1Max = 0;
  RtdCells RtdBank2Buffer{};
  std::int32_t Bank2Max = 0;

  std::uint16_t CodeCrc = 0;     // CRC-16 of the loaded VSK image
  std::uint16_t CodeSum = 0;     // additive checksum of the loaded VSK image
  std::uint16_t RtdBankSum = 0;  // additive checksum of the RTD2120 bank loaded last
  bool CodeLoaded = false;       // a VSK image has been loaded
  bool Bank1Loaded = false;      // an RTD2120 image has been loaded into bank buffer 1
  bool Bank2Loaded = false;

  void CrcCode();
  /// CRC of bank 0 and bank 1 laid end to end.
  void CrcBanks();
  void SumCode();
  void SumBanks();
  /// `CrcCode`, then `SumCode`.
  void CheckCode();
  /// Sums all 65,536 cells of bank buffer 1 for `bank` 1, of bank buffer 2 for any other value.
  void SumRtdBank(int bank);

  /// `hwCrc`: what the chip reported, -1 when it was never read.
  bool CrcMatches(std::int32_t hwCrc) const { return hwCrc == CodeCrc; }
};

/// The cells 0..maximum; none for a negative maximum.
std::span<const std::uint8_t> UsedCells(std::span<const std::uint8_t> cells, std::int32_t maximum);

}  // namespace tongxun
