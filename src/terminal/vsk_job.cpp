#include "terminal/vsk_job.h"

#include <algorithm>

#include "image/cells.h"
#include "terminal/refusals.h"
#include "text/hex_text.h"

namespace terminal {
namespace {

constexpr std::int32_t kLastAddress = 0xFFFF;
constexpr const char* kNothingReadable = "bank 0 is empty, and bank 1 cannot be read";

void Fail(Outcome& outcome, std::string failure, std::string place = {}) {
  if (!outcome.Good()) return;  // the first failure counts
  outcome.status = kChipSaysNo;
  outcome.failure = std::move(failure);
  outcome.place = std::move(place);
}

void Judge(const RunLine& run, bool good, Outcome& outcome) {
  const RunResult& result = run.result;
  outcome.shown = result.text;
  outcome.duration += run.duration;
  if (!result.failure.empty()) return Fail(outcome, result.failure, result.place);
  if (!good) Fail(outcome, result.text);
}

}  // namespace

VskJob::VskJob(Tool& tool, const CommandLine& line, Narrator& narrator,
               std::function<bool()> stopAsked)
    : tool_(tool),
      line_(line),
      narrator_(narrator),
      stopAsked_(std::move(stopAsked)),
      view_(narrator) {
  view_.quitAction = [this] { tool_.vskWriter.QuitIspMode(view_); };
  tool_.isp.ChipSelect = *line.model;
  tool_.vskImages.CodeBuffer.fill(0xFF);
}

Result<loadfile::ImageFacts> VskJob::Load(Outcome& outcome) {
  if (line_.command == Command::Read || line_.command == Command::Erase) {
    return loadfile::ImageFacts{};
  }
  const VskModel& model = tool_.isp.Model();
  if (Status known = NameIsKnown(line_.file, model.formats); !known.Ok()) return known;
  auto facts = tool_.vskWriter.Load(line_.file, view_);
  if (!facts.Ok()) return facts;
  const auto& files = tool_.vskImages.*model.files;
  outcome.files.clear();
  for (const auto& file : files) outcome.files.push_back(file.name);
  std::size_t size = 0;
  for (const VskBank& bank : model.banks) {
    const std::int32_t maximum = tool_.vskImages.*bank.maximum;
    size += static_cast<std::size_t>(maximum + 1);
    if (maximum <= kLastAddress) continue;
    return Status::Failed("the image reaches " + HexText(maximum) + ", and the flash ends at FFFF");
  }
  outcome.size = size;
  outcome.crc = HexText(tool_.vskImages.CodeCrc);
  if (facts->dataBytes == 0 || facts->emptyTexts > 0) {
    return Status::Failed(line_.file + kNoByte + (files.size() > 1 ? ", or its second one" : ""));
  }
  if (line_.command == Command::Compare && ReadableImage().empty()) {
    return Status::Failed(kNothingReadable);
  }
  for (std::size_t i = 0; i < model.banks.size(); ++i) {
    if (tool_.vskImages.*model.banks[i].maximum >= 0) continue;
    const std::string empty = files[i].name + ": missing or empty, and its bank is left erased";
    narrator_.Say(empty);
    facts->notes += "\n" + empty;
  }
  return facts;
}

void VskJob::Run(Outcome& outcome) {
  const auto read = static_cast<std::size_t>(Range().last - Range().first + 1);
  std::vector<std::size_t> parts{read};
  if (line_.command == Command::Program) parts = {*outcome.size, line_.compare ? read : 0};
  if (line_.command == Command::Erase) parts = {};
  narrator_.Plan(line_.name + " " + line_.chip, std::move(parts));
  switch (line_.command) {
    case Command::Program:
      return Program(outcome);
    case Command::Erase:
      return Erase(outcome);
    default:
      return ReadAndCompare(outcome);
  }
}

std::span<const std::uint8_t> VskJob::ReadableImage() const {
  const VskBank& bank = tool_.isp.Model().banks.front();
  return tongxun::UsedCells(tool_.vskImages.*bank.cells, tool_.vskImages.*bank.maximum);
}

AddressRange VskJob::Range() const {
  if (line_.pages) return *line_.pages;
  if (line_.command == Command::Read || line_.command == Command::Erase) {
    return {0, std::min(tool_.isp.Model().lastCell, kLastAddress)};
  }
  return {0, static_cast<std::int32_t>(ReadableImage().size()) - 1};
}

bool VskJob::Enter(Outcome& outcome) {
  view_.EnterOptionSelected();
  const bool entered = tool_.vskWriter.GoToIspMode(view_);
  if (!entered) Fail(outcome, kNotEntered);
  return entered;
}

/// A bus that always acknowledges, as one whose SDA is held low, never lets ISP mode end.
void VskJob::Leave(Outcome& outcome) {
  if (tool_.isp.IspModeOn && tool_.vskWriter.QuitIspMode(view_)) Fail(outcome, kNotLeft);
}

/// A silent chip has no CRC, pages that nobody erased are not erased, and what still listens after
/// it was programmed is no chip.
std::string VskJob::Unsaid(const RunLine& run) const {
  if (run.result.silent) return kSilent;
  return !run.images.empty() && run.Verified() && tool_.isp.IspModeOn ? kNotLeft : "";
}

const char* VskJob::Operation() const {
  switch (line_.command) {
    case Command::Program:
      return "Program";
    case Command::Erase:
      return line_.pages ? "Page Erase" : "Erase All";
    case Command::Read:
      return "Read";
    default:
      return "Compare";
  }
}

void VskJob::Program(Outcome& outcome) {
  if (!tool_.vskWriter.ImageIsMeant(view_)) return RefuseChanged(outcome);
  if (!Enter(outcome)) return;
  tool_.vskWriter.IspOperate = RunChoice::Program;
  const RunLine run = tool_.vskWriter.Run(view_);
  if (run.images.empty()) {  // nothing was sent but the entry
    RefuseChanged(outcome);
    return Leave(outcome);
  }
  outcome.chipCrc = CrcText(run.images, &RunImage::chipCrc);
  Judge(run, run.Verified(), outcome);
  narrator_.NextPart();
  if (!outcome.Good() || !line_.compare) return;
  if (stopAsked_()) {
    outcome.note = "not read back";
  } else if (ReadableImage().empty()) {
    outcome.note = kNothingReadable;
  } else {
    ReadAndCompare(outcome);
  }
}

void VskJob::Erase(Outcome& outcome) {
  if (!Enter(outcome)) return;
  tool_.vskWriter.IspOperate = RunChoice::EraseAll;
  if (line_.pages) {
    // An end of 0000 would mean the whole flash: the first page's last address means the page.
    const std::int32_t last = std::max(line_.pages->last, tongxun::kErasePageBytes - 1);
    view_.answers = {PaddedHex(line_.pages->first, 4), PaddedHex(last, 4)};
    tool_.vskWriter.IspOperate = RunChoice::PageErase;
  }
  const RunLine run = tool_.vskWriter.Run(view_);
  Judge(run, !run.result.text.empty(), outcome);
  Leave(outcome);
}

void VskJob::ReadAndCompare(Outcome& outcome) {
  cells_.clear();
  const bool entered = Enter(outcome);
  if (!entered && !tool_.port.StillThere()) return;  // no chip's fault, and no run
  tool_.runReport.Begin();
  if (!entered) return Log(outcome);
  ReadCells(Range(), outcome);
  Leave(outcome);
  if (HasUnreadableBanks()) outcome.note = "only bank 0 can be read back";
  if (stopAsked_()) outcome.note = "the reading was cut short";
  if (line_.command == Command::Read) {
    outcome.size = cells_.size();
    return Log(outcome);
  }
  const auto image = ReadableImage();
  if (outcome.Good() && cells_.size() == image.size()) {
    outcome.compared = image.size();
    for (std::size_t i = 0; i < image.size(); ++i) {
      if (cells_[i] == image[i]) continue;
      if (!outcome.difference) {
        outcome.difference = {0, static_cast<std::int32_t>(i), cells_[i], image[i]};
      }
      ++outcome.difference->count;
    }
    if (outcome.difference) Fail(outcome, "the chip differs from the file");
    narrator_.Step(outcome.difference ? outcome.failure : "read back, equal");
  }
  Log(outcome);
}

void VskJob::ReadCells(AddressRange range, Outcome& outcome) {
  const std::int32_t pageBytes = tool_.isp.Model().pageBytes;
  for (std::int32_t page = range.first / pageBytes; page <= range.last / pageBytes; ++page) {
    if (stopAsked_()) return;
    const PageRead read = tool_.isp.ReadChipPage(page, view_);
    const std::string place = "page " + HexText(page);
    if (read == PageRead::Refused) return Fail(outcome, "Page Read fail", place);
    if (read == PageRead::Silent) return Fail(outcome, kSilent, place);
    const std::int32_t start = page * pageBytes;
    for (std::int32_t at = std::max(range.first, start);
         at <= std::min(range.last, start + pageBytes - 1); ++at) {
      const auto byte = tool_.frames.IspRxBuf[static_cast<std::size_t>(at - start)];
      cells_.push_back(static_cast<std::uint8_t>(byte));
    }
    narrator_.Percent(static_cast<int>(100 * cells_.size() /
                                       static_cast<std::size_t>(range.last - range.first + 1)));
  }
  // A chip that went away within the last page has sent nothing but FF of it: one more page tells.
  if (tool_.isp.ReadChipPage(range.first / pageBytes, view_) != PageRead::Done) {
    Fail(outcome, kSilent, "the end");
  }
}

/// Of what was read.
void VskJob::Log(Outcome& outcome) {
  RunLine line{.chip = tool_.isp.Model().name,
               .operation = line_.command == Command::Read ? "Read" : "Compare",
               .images = {{.file = line_.file, .size = cells_.size()}}};
  const bool good = outcome.Good() && !stopAsked_();
  line.result.text = good ? "ok" : stopAsked_() ? "interrupted" : outcome.failure;
  if (!good) line.result.failure = line.result.text;
  outcome.duration += tool_.runReport.End(std::move(line)).duration;
}

}  // namespace terminal
