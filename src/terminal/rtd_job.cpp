#include "terminal/rtd_job.h"

namespace terminal {

using namespace tongxun2120;

bool RtdJob::Load(const std::string& file, Bank bank, Outcome& outcome) {
  if (file.empty()) return true;
  tool_.rtdWriter.Load(file, bank, view_);
  if (!view_.refusal.empty()) return false;
  const std::int32_t maximum = tool_.rtdImages.Of(bank).maximum;
  if (maximum < 0 || maximum > 0xFFFF) {
    view_.refusal = file + (maximum < 0 ? ": the file holds no byte of an image"
                                        : ": the image reaches beyond FFFF, where the bank ends");
    return false;
  }
  outcome.files.push_back(file);
  outcome.size = outcome.size.value_or(0) + static_cast<std::size_t>(maximum) + 1;
  return true;
}

bool RtdJob::Load(Outcome& outcome) {
  return Load(line_.file, Bank::First, outcome) && Load(line_.secondFile, Bank::Second, outcome);
}

void RtdJob::Run(Outcome& outcome) {
  RtdWriter& writer = tool_.rtdWriter;
  const bool erase = line_.command == Command::Erase;
  writer.OperateMode = erase ? RtdOperateMode::EraseOnly : RtdOperateMode::Automatic;
  writer.BankMode = line_.secondFile.empty() ? RtdBankMode::First
                    : line_.file.empty()     ? RtdBankMode::Second
                                             : RtdBankMode::Both;
  std::vector<std::size_t> parts;
  for (const Bank bank : {Bank::First, Bank::Second}) {
    const BankImage image = tool_.rtdImages.Of(bank);
    if (image.loaded) parts.push_back(static_cast<std::size_t>(image.maximum) + 1);
  }
  narrator_.Plan(line_.name + " " + line_.chip, std::move(parts));

  const RunLine run = writer.Run(view_);
  if (erase) tool_.rtdLink.RtdLeaveIsp();
  if (!view_.refusal.empty()) {  // nothing was sent
    outcome.status = kBadFile;
    outcome.failure = view_.refusal;
    return;
  }
  outcome.crc = run.crc;
  outcome.chipCrc = run.chipCrc;
  outcome.shown = run.result.text;
  outcome.duration = run.duration;
  outcome.failure = run.result.failure;
  outcome.place = run.result.place;
  const bool verified = erase || (!run.crc.empty() && run.crc == run.chipCrc);
  // A line that is held low from the middle of the run on seems to answer with CRC 0.
  const bool zero = ("+ " + run.crc + " +").find("+ 0 +") != std::string::npos;
  if (verified && zero && tool_.port.SdaIsLow()) outcome.failure = "SDA is held low";
  if (outcome.failure.empty() && run.result.silent) outcome.failure = "the chip did not answer";
  if (!outcome.failure.empty() || !verified) outcome.status = kChipSaysNo;
}

}  // namespace terminal
