#include "terminal/rtd_job.h"

#include <algorithm>

#include "terminal/refusals.h"

namespace terminal {

using namespace tongxun2120;

Result<loadfile::ImageFacts> RtdJob::Load(const std::string& file, Bank bank, Outcome& outcome) {
  if (Status known = NameIsKnown(file, kRtdFormats); !known.Ok()) return known;
  auto facts = tool_.rtdWriter.Load(file, bank, view_);
  if (!facts.Ok()) return facts;
  const std::int32_t maximum = tool_.rtdImages.Of(bank).maximum;
  if (facts->dataBytes == 0) return Status::Failed(file + kNoByte);
  if (maximum > 0xFFFF) {
    return Status::Failed(file + ": the image reaches beyond FFFF, where the bank ends");
  }
  outcome.size = outcome.size.value_or(0) + static_cast<std::size_t>(maximum) + 1;
  return facts;
}

Result<loadfile::ImageFacts> RtdJob::Load(Outcome& outcome) {
  Result<loadfile::ImageFacts> first = loadfile::ImageFacts{};
  if (!line_.file.empty()) first = Load(line_.file, Bank::First, outcome);
  if (!first.Ok() || line_.secondFile.empty()) return first;
  auto second = Load(line_.secondFile, Bank::Second, outcome);
  if (!second.Ok()) return second;
  first->notes += second->notes;
  first->wrongStartCodes += second->wrongStartCodes;
  return first;
}

/// A line that is held low from the middle of the run on seems to answer with CRC 0.
std::string RtdJob::Unsaid(const RunLine& run) {
  const auto isZero = [](const RunImage& image) { return image.crc == 0; };
  const bool zero = run.Verified() && std::ranges::any_of(run.images, isZero);
  if (zero && tool_.port.SdaIsLow()) return "SDA is held low";
  return run.result.silent ? kSilent : "";
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
  if (run.result.text.empty()) return RefuseChanged(outcome);  // nothing was sent
  outcome.crc = CrcText(run.images, &RunImage::crc);
  outcome.chipCrc = CrcText(run.images, &RunImage::chipCrc);
  outcome.shown = run.result.text;
  outcome.duration = run.duration;
  outcome.failure = run.result.failure;
  outcome.place = run.result.place;
  if (!outcome.failure.empty() || !(erase || run.Verified())) outcome.status = kChipSaysNo;
}

}  // namespace terminal
