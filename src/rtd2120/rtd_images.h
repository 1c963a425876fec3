// The firmware images for the RTD2120, one cell per byte address, and the checksum over them.
#pragma once

#include <array>
#include <cstdint>

#include "image/loaded_file.h"

namespace tongxun2120 {

using RtdCells = std::array<std::uint8_t, 65541>;  // indices 0..65540

/// The chip's two flash banks of 64 KiB.
enum class Bank { First = 0, Second = 1 };

/// What the tool holds for one bank.
struct BankImage {
  RtdCells& cells;
  std::int32_t& maximum;  // address of the last byte, -1 for an empty image
  bool& loaded;
  loadfile::LoadedFile& file;
};

/// Lives as long as the process; no load clears a buffer.
class RtdImages {
 public:
  RtdCells RtdLoadBuffer{};  // staging of a load; later the bank being written
  std::int32_t RtdLoadMax = 0;
  RtdCells RtdBank1Buffer{};
  std::int32_t Bank1Max = 0;
  bool Bank1Loaded = false;
  RtdCells RtdBank2Buffer{};
  std::int32_t Bank2Max = 0;
  bool Bank2Loaded = false;

  std::uint16_t RtdBankSum = 0;  // additive checksum of the bank loaded last

  BankImage Of(Bank bank) {
    loadfile::LoadedFile& file = files_[static_cast<std::size_t>(bank)];
    if (bank == Bank::First) return {RtdBank1Buffer, Bank1Max, Bank1Loaded, file};
    return {RtdBank2Buffer, Bank2Max, Bank2Loaded, file};
  }

  /// Sums all 65,536 cells of the bank's buffer.
  void SumRtdBank(Bank bank);

 private:
  std::array<loadfile::LoadedFile, 2> files_;
};

}  // namespace tongxun2120
