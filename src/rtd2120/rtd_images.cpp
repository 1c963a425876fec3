#include "rtd2120/rtd_images.h"

#include "image/cells.h"

namespace tongxun2120 {

void RtdImages::SumRtdBank(Bank bank) {
  RtdBankSum = tongxun::SumBytes(0, tongxun::UsedCells(Of(bank).cells, 0xFFFF));
}

}  // namespace tongxun2120
