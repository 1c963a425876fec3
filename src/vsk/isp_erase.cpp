// Erasing the whole flash or a range of 128-byte pages.
#include <algorithm>

#include "vsk/isp_operations.h"

namespace {

constexpr int kEraseAll = 0x68;
constexpr int kErasePage = 0x30;
constexpr std::int32_t kErasePageBytes = 128;
constexpr std::int32_t kLastErasePage = 255;  // the page number is one byte

}  // namespace

// S C 68 00 P, S A 00 00 P
bool IspOperations::ChipErase() {
  SendCommand(kEraseAll, 0x00);
  const bool erased = SendFollowUp();
  for (int i = 0; i < 101; ++i) timing_.BitDelay();
  return erased;
}

// S C 30 page P, S A 00 00 P     the chip is busy erasing, so the follow-up is not acknowledged
bool IspOperations::ErasePageRange(std::int32_t start, std::int32_t end, IspView& view) {
  if (end == 0) end = 0xFFFF;
  const std::int32_t first = start / kErasePageBytes;
  const std::int32_t last = end / kErasePageBytes;
  if (first <= last && last > kLastErasePage) {
    view.ShowMessage("only addresses 0000-7FFF can be page erased");
  }
  bool failed = false;
  for (std::int32_t page = first; page <= std::min(last, kLastErasePage); ++page) {
    SendCommand(kErasePage, page);
    failed = SendFollowUp();
    for (int i = 0; i < 501; ++i) timing_.BitDelay();
  }
  if (failed) {
    ShowStatus(view, StatusLabel::Operation, StatusColour::Red, "page erase fail");
  } else {
    ShowStatus(view, StatusLabel::Operation, StatusColour::Black, "page erase ok");
  }
  return failed;
}

void IspOperations::DoEraseAll(IspView& view) {
  ClearStatus(view);
  if (!IspModeOn) {
    ShowStatus(view, StatusLabel::IspMode, StatusColour::Red, "blankentire:isp mode is not exist");
    return;
  }
  ShowStatus(view, StatusLabel::IspMode, StatusColour::Black, "blankentire:isp mode is  exist");
  ShowBlankResult(ChipErase(), view);
}

void IspOperations::DoPageErase(IspView& view) {
  ClearStatus(view);
  if (!IspModeOn) {
    ShowStatus(view, StatusLabel::IspMode, StatusColour::Red, "page erase:isp mode is not exist");
    return;
  }
  ShowStatus(view, StatusLabel::IspMode, StatusColour::Black, "page erase:isp mode is  exist");
  const auto start = AskAddress(view, "please input start address:(0000-FFFF)", "0000");
  if (!start) return;
  const auto end = AskAddress(view, "please input end address:(0000-FFFF)", "FFFF");
  if (!end) return;
  ErasePageRange(*start, *end, view);
}
