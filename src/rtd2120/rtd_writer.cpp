#include "rtd2120/rtd_writer.h"

#include <vector>

#include "text/hex_text.h"

namespace tongxun2120 {

namespace {

void Join(std::string& list, const std::string& figure) {
  list += (list.empty() ? "" : " + ") + figure;
}

bool CanBeWritten(const BankImage& image) { return image.maximum >= 0 && image.maximum <= 0xFFFF; }

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
  chipChanged_ = false;
  view.SetStatusRed(false);
  view.SetStatusText("");
  if (!ImagesAreMeant(view)) return;
  Operate(view);
  line_.result.text = InOneLine(view.StatusText());
  if (chipChanged_) RunEnded(line_);
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

void RtdWriter::Operate(RtdView& view) {
  if (!link_.RtdEnterIsp()) return AppendLinkError(view);
  if (OperateMode == RtdOperateMode::EraseOnly) {
    Erase(view);
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
  return Erase(view) && WriteAndVerify(Bank::First, view);
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
  if (!CanBeWritten(image)) {
    constexpr const char* kAddressError = "Image address error.";
    AppendRedLine(view, kAddressError);
    return Held(false, kAddressError);
  }
  images_.RtdLoadBuffer = image.cells;
  operations_.RtdBuildPages(image.maximum);
  operations_.RtdMaxAddr = image.maximum;
  return true;
}

bool RtdWriter::Erase(RtdView& view) {
  chipChanged_ = true;
  return Held(operations_.RtdEraseChip(view), kLinkError);
}

/// Keeps what turned the status box red first; returns `held`.
bool RtdWriter::Held(bool held, std::string_view red) {
  if (!held && line_.result.failure.empty()) line_.result.failure = red;
  return held;
}

bool RtdWriter::WriteAndVerify(Bank bank, RtdView& view) {
  chipChanged_ = true;
  Held(operations_.RtdProgramBank(bank, view), kLinkError);
  const int calculated = operations_.RtdCalcCrc(view);
  const BankImage image = images_.Of(bank);
  Join(line_.file, image.file.name);
  line_.size += static_cast<std::size_t>(image.maximum) + 1;
  Join(line_.crc, HexText(calculated));
  const auto read = operations_.RtdReadCrc(bank, view);
  if (!Held(read.has_value(), kLinkError)) return false;
  Join(line_.chipCrc, HexText(*read));
  constexpr const char* kCrcFail = "CRC FAIL.";
  if (Held(*read == calculated, kCrcFail)) {
    AppendLine(view, "CRC OK.");
  } else {
    AppendRedLine(view, kCrcFail);
  }
  return true;
}

}  // namespace tongxun2120
