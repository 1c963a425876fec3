#include "rtd2120/rtd_writer.h"

#include <vector>

namespace tongxun2120 {
namespace {

bool CanBeWritten(const BankImage& image) { return image.maximum >= 0 && image.maximum <= 0xFFFF; }

}  // namespace

RunLine RtdWriter::Run(RtdView& view) {
  report_.Forget();
  port_.StillThere();  // one that has gone is told, and nobody answers then
  // A screen reader can change them while the run asks.
  const bool eraseOnly = OperateMode == RtdOperateMode::EraseOnly;
  const RtdBankMode banks = BankMode;
  line_ = {.chip = "RTD2120", .operation = eraseOnly ? "Erase" : "Auto"};
  RtdLog log(view);
  if (!eraseOnly && !ImagesAreMeant(banks, view)) return line_;
  if (!link_.RtdEnterIsp()) {
    log.AppendLinkError();
  } else if (eraseOnly) {
    Erase(log);
  } else {
    WriteLoadedBanks(banks, log, view);
    link_.RtdLeaveIsp();
    timing_.LongDelay();
  }
  line_.result = log.Result();
  return report_.End(line_);
}

/// Asks when a file whose image would be written has changed since it was loaded.
bool RtdWriter::ImagesAreMeant(RtdBankMode banks, RtdView& view) {
  std::vector<loadfile::LoadedFile> files;
  for (const Bank bank : {Bank::First, Bank::Second}) {
    const auto other = bank == Bank::First ? RtdBankMode::Second : RtdBankMode::First;
    const BankImage image = images_.Of(bank);
    if (banks != other && image.loaded && CanBeWritten(image)) files.push_back(image.file);
  }
  return loadfile::AgreedTo(files, view);
}

void RtdWriter::WriteLoadedBanks(RtdBankMode banks, RtdLog& log, RtdView& view) {
  if (banks != RtdBankMode::Second && !AutoWriteBank1(log, view)) return;
  if (banks != RtdBankMode::First) AutoWriteBank2(log, view);
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
  report_.Begin();
  return operations_.RtdEraseChip(log);
}

bool RtdWriter::WriteAndVerify(Bank bank, RtdLog& log) {
  report_.Begin();
  operations_.RtdProgramBank(bank, log);
  const BankImage image = images_.Of(bank);
  RunImage& written = line_.images.emplace_back();
  written = {.file = image.file.name,
             .size = static_cast<std::size_t>(image.maximum) + 1,
             .bank = static_cast<int>(bank),
             .crc = operations_.RtdCalcCrc(log),
             .chipCrc = operations_.RtdReadCrc(bank, log)};
  if (!written.chipCrc) return false;
  if (written.Verified()) {
    log.AppendLine("CRC OK.");
  } else {
    log.AppendRedLine("CRC FAIL.");
  }
  return true;
}

}  // namespace tongxun2120
