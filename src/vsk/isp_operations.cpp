#include "vsk/isp_operations.h"

#include <algorithm>

#include "image/page_text.h"
#include "text/hex_text.h"

using namespace tongxun;

namespace {

constexpr std::uint32_t kEraseTime_ms = 1000;
constexpr int kBitDelaysOfErase = 101;
constexpr int kBitDelaysOfPageErase = 501;
constexpr const char* kErasableRange = "only addresses 0000-7FFF can be page erased";
constexpr const char* kNothingErasable =
    "only addresses 0000-7FFF can be page erased: nothing can be erased at 8000 or above";

}  // namespace

// S code1&FE code2 .. coden P
bool IspOperations::EnterIspMode(IspView& view) {
  if (IspModeOn) {
    ShowStatus(view, StatusLabel::IspMode, StatusColour::Black, "isp mode is already exist");
    return false;
  }
  const auto& params = frames_.IspParams;
  int count = std::min<int>(params[kEntryCodeCount], kMostCodes) - 1;  // behind the first
  if (count > 0) {
    std::copy_n(params.begin() + kEntryFirstCode + 1, count, frames_.IspTxBuf.begin());
  }
  IspModeOn = frames_.IspWriteFrame(params[kEntryFirstCode], count, true);
  ShowResult(view, StatusLabel::IspMode, IspModeOn, "isp mode is exist", kNotEntered);
  return IspModeOn;
}

// S C 48 00 P     the chip leaves at 48 and no longer acknowledges 00
bool IspOperations::QuitIspMode(IspView& view) {
  const bool stillListening = frames_.Send(frames_.CommandAddress(), {kQuit, 0x00});
  if (!stillListening) IspModeOn = false;
  ShowResult(view, StatusLabel::IspMode, !stillListening, "isp mode is out", kNotLeft);
  if (stillListening) {
    view.DeselectQuitOption();
  } else {
    view.SelectQuitOption();
  }
  return stillListening;
}

/// Empties both status labels and shows whether the operation may go on.
bool IspOperations::BeginsInIspMode(std::string_view inMode, std::string_view outside,
                                    IspView& view) const {
  ClearStatus(view);
  ShowResult(view, StatusLabel::IspMode, IspModeOn, inMode, outside);
  return IspModeOn;
}

// S A 00 00 P
bool IspOperations::SendFollowUp() { return frames_.Send(frames_.DataAddress(), {0x00, 0x00}); }

void IspOperations::WaitBitDelays(int count) {
  for (int i = 0; i < count; ++i) timing_.BitDelay();
}

// S C 68 00 P, S A 00 00 P
bool IspOperations::ChipErase() {
  frames_.Send(frames_.CommandAddress(), {kEraseAll, 0x00});
  const bool erased = SendFollowUp();
  WaitBitDelays(kBitDelaysOfErase);
  return erased;
}

RunResult IspOperations::EraseAndShow(IspView& view) {
  report_.Begin();
  return ShowResult(view, StatusLabel::Operation, ChipErase(), "Blank ok", "Blank fail");
}

// S C 30 page P, S A 00 00 P     the chip is busy erasing, so the follow-up is not acknowledged
RunResult IspOperations::ErasePageRange(std::int32_t start, std::int32_t end, IspView& view) {
  if (end == 0) end = 0xFFFF;
  const std::int32_t first = start / kErasePageBytes;
  const std::int32_t last = end / kErasePageBytes;
  if (first > kLastPage) {
    view.ShowMessage(kNothingErasable);
    return {};
  }
  if (last > kLastPage && !view.Confirm(kErasableRange)) return {};

  if (first <= last) report_.Begin();
  bool failed = false;
  bool silent = false;
  for (auto page = static_cast<std::int16_t>(first); page <= std::min(last, kLastPage); ++page) {
    if (!frames_.Send(frames_.CommandAddress(), {kErasePage, page})) silent = true;
    failed = SendFollowUp();
    WaitBitDelays(kBitDelaysOfPageErase);
  }
  RunResult result =
      ShowResult(view, StatusLabel::Operation, !failed, "page erase ok", "page erase fail");
  result.silent = silent;
  return first > last ? RunResult{} : result;  // without a page nothing was sent
}

// S C 00 page P, S A 00 Sr A|01 [page's bytes] P
PageRead IspOperations::ReadChipPage(std::int32_t page, IspView& view) {
  if (!frames_.Send(frames_.CommandAddress(), {kSelectPage, static_cast<std::int16_t>(page)})) {
    ShowStatus(view, StatusLabel::Operation, StatusColour::Red, "Page Read fail");
    return PageRead::Refused;
  }
  frames_.IspTxBuf[0] = kData;
  const bool sent = frames_.IspWriteReadFrame(frames_.DataAddress(), 1, Model().pageBytes);
  return sent ? PageRead::Done : PageRead::Silent;
}

void IspOperations::ShowReadPage(std::int32_t page, IspView& view) const {
  const std::span<const std::int32_t> received(frames_.IspRxBuf);
  const auto bytes = static_cast<std::size_t>(Model().pageBytes);
  view.ShowData(PageText(received.first(bytes), page, " (Read Page Code)"));
}

/// `percent`: of the bank.
int IspOperations::OfAllBanks(const VskBank& bank, int percent) const {
  const std::span<const VskBank> banks = Model().banks;
  return static_cast<int>((percent + 100 * (&bank - banks.data())) / std::ssize(banks));
}

// per page: S C command page P, S A 00 data.. P
std::optional<std::int32_t> IspOperations::SendPages(const VskBank& bank, std::int32_t maximum,
                                                     IspView& view) {
  int shown = 0;
  std::optional<std::int32_t> refused = 0;
  for (std::int32_t page = 0; page <= maximum / Model().pageBytes; ++page) {
    if (page > kLastPage) return page;
    const std::int16_t pageNumber = static_cast<std::int16_t>(page);
    if (!frames_.Send(frames_.CommandAddress(), {bank.command, pageNumber}, bank.addressByte)) {
      return page;
    }
    view.Programmed(OfAllBanks(bank, 100 * page * Model().pageBytes / std::max(maximum, 1)));
    refused = SendPage(bank, page, maximum, shown, view) ? std::nullopt : std::optional(page);
  }
  return refused;
}

// S A 00 data.. P
bool IspOperations::SendPage(const VskBank& bank, std::int32_t page, std::int32_t maximum,
                             int& shown, IspView& view) {
  const auto& cells = images_.*bank.cells;
  const std::int32_t pageBytes = Model().pageBytes;
  frames_.IspTxBuf[0] = kData;
  int count = 1;
  for (std::int32_t address = page * pageBytes; address < (page + 1) * pageBytes; ++address) {
    if (address > maximum) {
      view.SetStatusText(StatusLabel::Operation, "finish");
      view.RepaintStatus(StatusLabel::Operation);
      break;
    }
    ShowProgress(bank, address, maximum, shown, view);
    frames_.IspTxBuf[static_cast<std::size_t>(count++)] = cells[static_cast<std::size_t>(address)];
  }
  return frames_.SendBuffer(frames_.DataAddress(), count, bank.addressByte);
}

/// Shows each tenth of the image once, when its first byte is taken; `shown` counts them.
void IspOperations::ShowProgress(const VskBank& bank, std::int32_t address, std::int32_t maximum,
                                 int& shown, IspView& view) {
  // An image of one byte is done with its first byte.
  const int percent = maximum == 0 ? 100 : 100 * address / maximum;
  if (percent != 10 * shown && maximum != 0) return;
  const std::string shownPercent = std::to_string(OfAllBanks(bank, percent));
  view.SetStatusText(StatusLabel::Operation, "finish  " + shownPercent + "%");
  view.RepaintStatus(StatusLabel::Operation);
  ++shown;
}

// the pages of each bank, the chip's CRC, quit
RunResult IspOperations::ProgramImage(IspView& view) {
  std::optional<std::int32_t> refused;
  for (const VskBank& bank : Model().banks) {
    refused = SendPages(bank, images_.*bank.maximum, view);
  }
  RunResult result =
      ShowResult(view, StatusLabel::Operation, !refused, "programcode ok", "programcode fail");
  if (refused) result.place = "page " + HexText(*refused);
  view.RepaintStatus(StatusLabel::Operation);
  result.silent = !frames_.ReadHwCrc();
  ReportedCrc = frames_.HwCrc;
  view.ShowInBox(ImageBox::HardwareCrc, HexText(ReportedCrc));
  QuitIspMode(view);
  return result;
}

RunResult IspOperations::DoEraseAll(IspView& view) {
  if (!BeginsInIspMode("blankentire:isp mode is  exist", "blankentire:isp mode is not exist",
                       view)) {
    return {};
  }
  return EraseAndShow(view);
}

RunResult IspOperations::DoPageErase(IspView& view) {
  if (!BeginsInIspMode("page erase:isp mode is  exist", "page erase:isp mode is not exist", view)) {
    return {};
  }
  const auto start = AskAddress(view, "please input start address:(0000-FFFF)", "0000");
  if (!start) return {};
  const auto end = AskAddress(view, "please input end address:(0000-FFFF)", "FFFF");
  return end ? ErasePageRange(*start, *end, view) : RunResult{};
}

// erase, a second's pause, S C D0 P, the image, the CRC compared
RunResult IspOperations::DoProgram(IspView& view) {
  const bool inIspMode =
      BeginsInIspMode("program:isp mode is exist", "program:isp mode is not exist", view);
  view.RepaintStatus(StatusLabel::IspMode);
  if (!inIspMode) return {};
  EraseAndShow(view);
  view.RepaintStatus(StatusLabel::Operation);
  timing_.WaitMilliseconds(kEraseTime_ms);
  frames_.Send(frames_.CommandAddress(), {kResetCrc});
  RunResult result = ProgramImage(view);
  result.text = images_.CrcMatches(frames_.HwCrc) ? "Write Ok" : "CRC Error";
  view.SetStatusText(StatusLabel::Operation, result.text);  // in the colour that is there
  frames_.HwCrc = 0;
  return result;
}

void IspOperations::DoPageRead(std::int32_t& page, IspView& view) {
  if (!BeginsInIspMode("read_code:isp mode is  exist", "read_code:isp mode is not exist", view)) {
    return;
  }
  const auto asked = AskPageNumber(view);
  if (!asked) return;
  page = *asked;
  if (ReadChipPage(page, view) != PageRead::Refused) ShowReadPage(page, view);
}
