#include "rtd2120/rtd_writer.h"

namespace tongxun2120 {

void RtdWriter::Run(RtdView& view) {
  view.SetStatusRed(false);
  view.SetStatusText("");
  if (!link_.RtdEnterIsp()) return AppendLinkError(view);
  if (OperateMode == RtdOperateMode::EraseOnly) {
    operations_.RtdEraseChip(view);
    return;
  }
  WriteLoadedBanks(view);
  link_.RtdLeaveIsp();
  timing_.LongDelay();
}

void RtdWriter::WriteLoadedBanks(RtdView& view) {
  if (BankMode != RtdBankMode::Second && !AutoWriteBank1(view)) return;
  if (BankMode != RtdBankMode::First) AutoWriteBank2(view);
}

bool RtdWriter::AutoWriteBank1(RtdView& view) {
  if (!Prepare(Bank::First, "Please load code in Buffer 1", view)) return true;
  return operations_.RtdEraseChip(view) && WriteAndVerify(Bank::First, view);
}

bool RtdWriter::AutoWriteBank2(RtdView& view) {
  if (!Prepare(Bank::Second, "Please load code in Buffer 2", view)) return true;
  return WriteAndVerify(Bank::Second, view);
}

/// Lays the bank's image out for writing. False when there is none that can be written.
bool RtdWriter::Prepare(Bank bank, const char* missingMessage, RtdView& view) {
  const BankImage image = images_.Of(bank);
  if (!image.loaded) {
    view.ShowMessage(missingMessage);
    return false;
  }
  if (image.maximum < 0 || image.maximum > 0xFFFF) {
    AppendRedLine(view, "Image address error.");
    return false;
  }
  images_.RtdLoadBuffer = image.cells;
  operations_.RtdBuildPages(image.maximum);
  operations_.RtdMaxAddr = image.maximum;
  return true;
}

bool RtdWriter::WriteAndVerify(Bank bank, RtdView& view) {
  operations_.RtdProgramBank(bank, view);
  const int calculated = operations_.RtdCalcCrc(view);
  const auto read = operations_.RtdReadCrc(bank, view);
  if (!read) return false;
  if (*read == calculated) {
    AppendLine(view, "CRC OK.");
  } else {
    AppendRedLine(view, "CRC FAIL.");
  }
  return true;
}

}  // namespace tongxun2120
