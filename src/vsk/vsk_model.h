// The VSK chips that the tool programs. A chip variant is a row here.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "vsk/isp_frames.h"
#include "vsk/vsk_images.h"
#include "vsk/vsk_load.h"
#include "vsk/vsk_protocol.h"

/// The rows of the table, in their order.
enum class VskChip { Vsk830 = 0, Vsk630 = 1 };

/// One flash bank of a chip: what it is programmed from, and with which frames.
struct VskBank {
  tongxun::VskCells tongxun::VskImages::*cells;
  std::int32_t tongxun::VskImages::*maximum;
  std::int16_t command;              // of the page-program frame
  tongxun::AddressByte addressByte;  // of the page-program and page-data frames
};

struct VskModel {
  const char* name;  // caption of its option; the launcher's button adds a V
  std::span<const VskBank> banks;
  std::int32_t pageBytes;     // of a programmed and of a read page, at most 512
  loadfile::Formats formats;  // of its firmware files
  VskLoader load;             // reads them
  std::vector<loadfile::LoadedFile> tongxun::VskImages::*files;  // what its banks came from
  std::int32_t lastCell;  // highest address that an image may reach, 0..65536
};

namespace tongxun {

inline constexpr std::array<VskBank, 1> kOneBank{
    {{&VskImages::CodeBuffer, &VskImages::CodeMax, kProgramBank0, AddressByte::BitZeroCleared}}};
inline constexpr std::array<VskBank, 2> kTwoBanks{
    {{&VskImages::CodeBank0, &VskImages::CodeBank0Max, kProgramBank0, AddressByte::Unchanged},
     {&VskImages::CodeBank1, &VskImages::CodeBank1Max, kProgramBank1, AddressByte::Unchanged}}};

}  // namespace tongxun

inline constexpr std::array kVskModels{
    VskModel{"VSK830", tongxun::kOneBank, 256, loadfile::kOneFileFormats, Load_Vsk830_NormalFile,
             &tongxun::VskImages::CodeFiles, 65536},
    VskModel{"VSK630", tongxun::kTwoBanks, 256, loadfile::kPairFormats, Load_Vsk630_NormalFile,
             &tongxun::VskImages::BankFiles, 65536},
};

constexpr const VskModel& ModelOf(VskChip chip) {
  return kVskModels[static_cast<std::size_t>(chip)];
}
