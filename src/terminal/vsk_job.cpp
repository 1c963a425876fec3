#include "terminal/vsk_job.h"

#include <algorithm>

#include "image/cells.h"
#include "text/hex_text.h"

namespace terminal {
namespace {

constexpr std::int32_t kLastAddress = 0xFFFF;
constexpr const char* kSilent = "the chip did not answer";
constexpr const char* kNothingReadable = "bank 0 is empty, and bank 1 cannot be read";

void Fail(Outcome& outcome, std::string failure, std::string place = {}) {
  if (!outcome.Good()) return;  // the first failure counts
  outcome.status = kChipSaysNo;
  outcome.failure = std::move(failure);
  outcome.place = std::move(place);
}

/// What the status texts say of a run, and what they cannot: a silent chip has no CRC, and pages
/// that nobody erased are not erased.
void Judge(const RunLine& run, bool good, Outcome& outcome) {
  const RunResult& result = run.result;
  outcome.shown = result.text;
  outcome.duration += run.duration;
  if (!result.failure.empty()) return Fail(outcome, result.failure, result.place);
  if (result.silent) return Fail(outcome, kSilent);
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

bool VskJob::Load(Outcome& outcome) {
  if (line_.command == Command::Read || line_.command == Command::Erase) return true;
  tool_.vskWriter.Load(line_.file, view_);
  if (!view_.refusal.empty()) return false;
  for (const auto& file : tool_.vskImages.*tool_.isp.Model().files) {
    outcome.files.push_back(file.name);
  }
  std::size_t size = 0;
  for (const VskBank& bank : tool_.isp.Model().banks) {
    const std::int32_t maximum = tool_.vskImages.*bank.maximum;
    size += static_cast<std::size_t>(maximum + 1);
    if (maximum <= kLastAddress) continue;
    view_.refusal = "the image reaches " + HexText(maximum) + ", and the flash ends at FFFF";
    return false;
  }
  outcome.size = size;
  outcome.crc = HexText(tool_.vskImages.CodeCrc);
  if (size == 0) {
    view_.refusal = line_.file + ": the file holds no byte of an image";
  } else if (line_.command == Command::Compare && ReadableImage().empty()) {
    view_.refusal = kNothingReadable;
  }
  return view_.refusal.empty();
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
  tool_.vskWriter.GoToIspMode(view_);
  if (!tool_.isp.IspModeOn) Fail(outcome, view_.modeStatus);
  return tool_.isp.IspModeOn;
}

/// A bus that always acknowledges, as one whose SDA is held low, never lets ISP mode end.
void VskJob::Leave(Outcome& outcome) {
  if (tool_.isp.IspModeOn) tool_.vskWriter.QuitIspMode(view_);
  if (tool_.isp.IspModeOn) Fail(outcome, view_.modeStatus);
}

bool VskJob::Refused(Outcome& outcome) const {
  if (view_.refusal.empty()) return false;
  outcome.status = kBadFile;
  outcome.failure = view_.refusal;
  return true;
}

void VskJob::Program(Outcome& outcome) {
  if (!tool_.vskWriter.ImageIsMeant(view_) && Refused(outcome)) return;
  if (!Enter(outcome)) return;
  tool_.vskWriter.IspOperate = RunChoice::Program;
  const RunLine run = tool_.vskWriter.Run(view_);
  if (Refused(outcome)) return Leave(outcome);  // nothing was sent but the entry
  outcome.chipCrc = run.chipCrc;
  Judge(run, run.result.text == "Write Ok", outcome);
  if (tool_.isp.IspModeOn) Fail(outcome, view_.modeStatus);
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
    view_.answers = {AddressText(line_.pages->first), AddressText(last)};
    tool_.vskWriter.IspOperate = RunChoice::PageErase;
  }
  const RunLine run = tool_.vskWriter.Run(view_);
  Judge(run, !run.result.text.empty(), outcome);
  Leave(outcome);
}

void VskJob::ReadAndCompare(Outcome& outcome) {
  if (!Enter(outcome)) return;
  tool_.runReport.Begin();
  ReadCells(Range(), outcome);
  Leave(outcome);
  if (stopAsked_()) outcome.note = "the reading was cut short";
  if (line_.command == Command::Read) {
    outcome.size = cells_.size();
    return Log("Read", outcome);
  }
  const auto image = ReadableImage();
  if (outcome.Good() && cells_.size() == image.size()) {
    outcome.compared = image.size();
    if (HasUnreadableBanks()) outcome.note = "only bank 0 can be read back";
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
  Log("Compare", outcome);
}

void VskJob::ReadCells(AddressRange range, Outcome& outcome) {
  const std::int32_t pageBytes = tool_.isp.Model().pageBytes;
  cells_.clear();
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

void VskJob::Log(const char* operation, Outcome& outcome) {
  RunLine line{.chip = tool_.isp.Model().name, .operation = operation, .file = line_.file};
  line.size = cells_.size();
  const bool good = outcome.Good() && !stopAsked_();
  line.result.text = good ? "ok" : stopAsked_() ? "interrupted" : outcome.failure;
  if (!good) line.result.failure = line.result.text;
  outcome.duration += tool_.runReport.End(std::move(line)).duration;
}

}  // namespace terminal
