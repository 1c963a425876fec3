#include "rtd2120/rtd_writer.h"

using tongxun2120::Bank;

struct RtdWriter::BankImage {
  bool loaded;
  const char* missingMessage;
  const tongxun::RtdCells& cells;
  std::int32_t maximum;
};

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
  const BankImage image{buffers_.Bank1Loaded, "Please load code in Buffer 1",
                        buffers_.RtdBank1Buffer, buffers_.Bank1Max};
  if (!Prepare(image, view)) return true;
  if (!operations_.RtdEraseChip(view)) return false;
  WriteAndVerify(Bank::First, view);
  return true;
}

void RtdWriter::AutoWriteBank2(RtdView& view) {
  const BankImage image{buffers_.Bank2Loaded, "Please load code in Buffer 2",
                        buffers_.RtdBank2Buffer, buffers_.Bank2Max};
  if (Prepare(image, view)) WriteAndVerify(Bank::Second, view);
}

/// Lays the bank's image out for writing. False when there is none that can be written.
bool RtdWriter::Prepare(const BankImage& image, RtdView& view) {
  if (!image.loaded) {
    view.ShowMessage(image.missingMessage);
    return false;
  }
  if (image.maximum < 0 || image.maximum > 0xFFFF) {
    AppendRedLine(view, "Image address error.");
    return false;
  }
  buffers_.RtdLoadBuffer = image.cells;
  operations_.RtdBuildPages(image.maximum);
  operations_.RtdMaxAddr = image.maximum;
  return true;
}

void RtdWriter::WriteAndVerify(Bank bank, RtdView& view) {
  operations_.RtdProgramBank(bank, view);
  const int calculated = operations_.RtdCalcCrc(view);
  const auto read = operations_.RtdReadCrc(bank, view);
  if (!read) return;
  if (*read == calculated) {
    AppendLine(view, "CRC OK.");
  } else {
    AppendRedLine(view, "CRC FAIL.");
  }
}
