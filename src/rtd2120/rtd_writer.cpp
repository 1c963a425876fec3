#include "rtd2120/rtd_writer.h"

#include "text/hex_text.h"

namespace tongxun2120 {

namespace {

void Join(std::string& list, const std::string& figure) {
  list += (list.empty() ? "" : " + ") + figure;
}

/// The status box in one line.
std::string InOneLine(std::string text) {
  if (text.ends_with("\r\n")) text.resize(text.size() - 2);
  for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;) {
    text.replace(at, 2, "; ");
  }
  return text;
}

}  // namespace

void RtdWriter::Run(RtdView& view) {
  port_.StillThere();  // one that has gone is told, and nobody answers then
  line_ = {.chip = "RTD2120"};
  line_.operation = OperateMode == RtdOperateMode::EraseOnly ? "Erase" : "Auto";
  view.SetStatusRed(false);
  view.SetStatusText("");
  Operate(view);
  line_.result = InOneLine(view.StatusText());
  if (!line_.result.empty()) RunEnded(line_);
}

void RtdWriter::Operate(RtdView& view) {
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
  const BankImage image = images_.Of(bank);
  Join(line_.file, image.file);
  line_.size += static_cast<std::size_t>(image.maximum) + 1;
  Join(line_.crc, HexText(calculated));
  const auto read = operations_.RtdReadCrc(bank, view);
  if (!read) return false;
  Join(line_.chipCrc, HexText(*read));
  if (*read == calculated) {
    AppendLine(view, "CRC OK.");
  } else {
    AppendRedLine(view, "CRC FAIL.");
  }
  return true;
}

}  // namespace tongxun2120
