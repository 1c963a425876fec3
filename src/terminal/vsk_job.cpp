#include "terminal/vsk_job.h"

#include <algorithm>

#include "image/cells.h"
#include "text/hex_text.h"

namespace terminal {
namespace {

constexpr std::int32_t kLastAddress = 0xFFFF;
constexpr const char* kSilent = "the chip did not answer";

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

std::string FourDigits(std::int32_t address) {
  return fileop::HexByte(address / 256) + fileop::HexByte(address % 256);
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
  if (view_.refused) return false;
  for (const auto& file : tool_.vskImages.*tool_.isp.Model().files) {
    outcome.files.push_back(file.name);
  }
  std::size_t size = 0;
  for (const VskBank& bank : tool_.isp.Model().banks) {
    const std::int32_t maximum = tool_.vskImages.*bank.maximum;
    size += static_cast<std::size_t>(maximum + 1);
    if (maximum <= kLastAddress) continue;
    narrator_.Say("the image reaches address " + HexText(maximum) + ", and the flash ends at FFFF");
    return false;
  }
  outcome.size = size;
  outcome.crc = HexText(tool_.vskImages.CodeCrc);
  if (size == 0) narrator_.Say(line_.file + ": the file holds no byte of an image");
  return size != 0;
}

void VskJob::Run(Outcome& outcome) {
  const auto read = static_cast<std::size_t>(Range().last - Range().first + 1);
  std::vector<std::size_t> parts{read};
  if (line_.command == Command::Program) {
    parts = {outcome.size.value_or(0), line_.compare ? read : 0};
  }
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

void VskJob::Program(Outcome& outcome) {
  if (!Enter(outcome)) return;
  tool_.vskWriter.IspOperate = RunChoice::Program;
  const RunLine run = tool_.vskWriter.Run(view_);
  if (view_.refused) {  // nothing was sent but the entry
    outcome.status = kBadFile;
    return Leave(outcome);
  }
  outcome.chipCrc = run.chipCrc;
  Judge(run, run.result.text == "Write Ok", outcome);
  if (tool_.isp.IspModeOn) Fail(outcome, view_.modeStatus);
  narrator_.Percent(100);
  if (outcome.Good() && line_.compare && !stopAsked_()) ReadAndCompare(outcome);
}

void VskJob::Erase(Outcome& outcome) {
  if (!Enter(outcome)) return;
  tool_.vskWriter.IspOperate = RunChoice::EraseAll;
  if (line_.pages) {
    // An end of 0000 would mean the whole flash: the first page's last address means the page.
    const std::int32_t last = std::max(line_.pages->last, tongxun::kErasePageBytes - 1);
    view_.answers = {FourDigits(line_.pages->first), FourDigits(last)};
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
}

void VskJob::Log(const char* operation, const Outcome& outcome) {
  RunLine line{.chip = tool_.isp.Model().name, .operation = operation};
  if (!outcome.files.empty()) line.file = outcome.files.front();
  line.size = cells_.size();
  line.result.text = outcome.Good() ? "ok" : outcome.failure;
  if (!outcome.Good()) line.result.failure = line.result.text;
  tool_.runReport.End(std::move(line));
}

}  // namespace terminal
