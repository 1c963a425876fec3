#include "rtd2120/rtd_writer.h"

#include <vector>

#include "text/hex_text.h"

namespace tongxun2120 {

namespace {

void Join(std::string& list, const std::string& figure) {
  list += (list.empty() ? "" : " + ") + figure;
}

bool CanBeWritten(const BankImage& image) { return image.maximum >= 0 && image.maximum <= 0xFFFF; }

}  // namespace

RunLine RtdWriter::Run(RtdView& view) {
  port_.StillThere();  // one that has gone is told, and nobody answers then
  line_ = {.chip = "RTD2120"};
  line_.operation = OperateMode == RtdOperateMode::EraseOnly ? "Erase" : "Auto";
  chipChanged_ = false;
  RtdLog log(view);
  if (!ImagesAreMeant(view)) return line_;
  report_.Begin();
  Operate(log, view);
  line_.result = log.Result();
  return chipChanged_ ? report_.End(line_) : line_;
}

/// Asks when a file whose image would be written has changed since it was loaded.
bool RtdWriter::ImagesAreMeant(RtdView& view) {
  if (OperateMode == RtdOperateMode::EraseOnly) return true;
  std::vector<loadfile::LoadedFile> files;
  for (const Bank bank : {Bank::First, Bank::Second}) {
    const auto other = bank == Bank::First ? RtdBankMode::Second : RtdBankMode::First;
    const BankImage image = images_.Of(bank);
    if (BankMode != other && image.loaded && CanBeWritten(image)) files.push_back(image.file);
  }
  return loadfile::AgreedTo(files,
                            [&view](std::string_view question) { return view.Confirm(question); });
}

void RtdWriter::Operate(RtdLog& log, RtdView& view) {
  if (!link_.RtdEnterIsp()) return log.AppendLinkError();
  if (OperateMode == RtdOperateMode::EraseOnly) {
    Erase(log);
    return;
  }
  WriteLoadedBanks(log, view);
  link_.RtdLeaveIsp();
  timing_.LongDelay();
}

void RtdWriter::WriteLoadedBanks(RtdLog& log, RtdView& view) {
  if (BankMode != RtdBankMode::Second && !AutoWriteBank1(log, view)) return;
  if (BankMode != RtdBankMode::First) AutoWriteBank2(log, view);
}

bool RtdWriter::AutoWriteBank1(RtdLog& log, RtdView& view) {
  if (!Prepare(Bank::First, "Please load code in Buffer 1", log, view)) return true;
  return Erase(log) && WriteAndVerify(Bank::First, log);
}

bool RtdWriter::AutoWriteBank2(RtdLog& log, RtdView& view) {
  if (!Prepare(Bank::Second, "Please load code in Buffer 2", log, view)) return true;
  return WriteAndVerify(Bank::Second, log);
}

/// Lays the bank's image out for writing. False when there is none that can be written.
bool RtdWriter::Prepare(Bank bank, const char* missingMessage, RtdLog& log, RtdView& view) {
  const BankImage image = images_.Of(bank);
  if (!image.loaded) {
    view.ShowMessage(missingMessage);
    return false;
  }
  if (!CanBeWritten(image)) {
    log.AppendRedLine("Image address error.");
    return false;
  }
  images_.RtdLoadBuffer = image.cells;
  operations_.RtdBuildPages(image.maximum);
  operations_.RtdMaxAddr = image.maximum;
  return true;
}

bool RtdWriter::Erase(RtdLog& log) {
  chipChanged_ = true;
  return operations_.RtdEraseChip(log);
}

bool RtdWriter::WriteAndVerify(Bank bank, RtdLog& log) {
  chipChanged_ = true;
  operations_.RtdProgramBank(bank, log);
  const int calculated = operations_.RtdCalcCrc(log);
  const BankImage image = images_.Of(bank);
  Join(line_.file, image.file.name);
  line_.size += static_cast<std::size_t>(image.maximum) + 1;
  Join(line_.crc, HexText(calculated));
  const auto read = operations_.RtdReadCrc(bank, log);
  if (!read) return false;
  Join(line_.chipCrc, HexText(*read));
  if (*read == calculated) {
    log.AppendLine("CRC OK.");
  } else {
    log.AppendRedLine("CRC FAIL.");
  }
  return true;
}

}  // namespace tongxun2120
