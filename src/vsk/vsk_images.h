// The firmware images for the VSK chips, one cell per byte address, and the checks over them.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "image/loaded_file.h"

namespace tongxun {

using VskCells = std::array<std::uint8_t, 65537>;  // indices 0..65536

/// Lives as long as the process; no load clears a buffer. A maximum address is the address of the
/// image's last byte, -1 for an empty image; every range is inclusive, 0..maximum.
class VskImages {
 public:
  VskCells CodeBuffer{};  // VSK830 image, and the staging area of a VSK630 pair
  std::int32_t CodeMax = 0;
  VskCells CodeBank0{};  // VSK630
  std::int32_t CodeBank0Max = 0;
  VskCells CodeBank1{};
  std::int32_t CodeBank1Max = 0;

  // The files they came from. A pair passes through `CodeBuffer`, which then holds no file's image.
  std::vector<loadfile::LoadedFile> CodeFiles;
  std::vector<loadfile::LoadedFile> BankFiles;

  std::uint16_t CodeCrc = 0;  // CRC-16 of the loaded image
  std::uint16_t CodeSum = 0;  // additive checksum of the loaded image
  bool CodeLoaded = false;    // an image has been loaded

  void CrcCode();
  /// CRC of bank 0 and bank 1 laid end to end.
  void CrcBanks();
  void SumCode();
  void SumBanks();
  /// `CrcCode`, then `SumCode`.
  void CheckCode();

  /// `hwCrc`: what the chip reported, -1 when it was never read.
  bool CrcMatches(std::int32_t hwCrc) const { return hwCrc == CodeCrc; }
};

}  // namespace tongxun
