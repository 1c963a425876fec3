#include "vsk/vsk_images.h"

#include "image/cells.h"
#include "image/crc16.h"

namespace tongxun {

void VskImages::CrcCode() { CodeCrc = CrcBytes(kCrcStart, UsedCells(CodeBuffer, CodeMax)); }

void VskImages::CrcBanks() {
  CodeCrc = CrcBytes(kCrcStart, UsedCells(CodeBank0, CodeBank0Max));
  CodeCrc = CrcBytes(CodeCrc, UsedCells(CodeBank1, CodeBank1Max));
}

void VskImages::SumCode() { CodeSum = SumBytes(0, UsedCells(CodeBuffer, CodeMax)); }

void VskImages::SumBanks() {
  CodeSum = SumBytes(0, UsedCells(CodeBank0, CodeBank0Max));
  CodeSum = SumBytes(CodeSum, UsedCells(CodeBank1, CodeBank1Max));
}

void VskImages::CheckCode() {
  CrcCode();
  SumCode();
}

}  // namespace tongxun
