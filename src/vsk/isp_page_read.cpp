// Reading one 256-byte page back from the chip.
#include "vsk/isp_operations.h"

namespace {

constexpr int kSelectPage = 0x00;
constexpr int kPageBytes = 256;

}  // namespace

// S C 00 page P, S A 00 Sr A|01 [256 bytes] P
bool IspOperations::ReadChipPage(std::int32_t page, IspView& view) {
  if (!SendCommand(kSelectPage, page)) {
    ShowStatus(view, StatusLabel::Operation, StatusColour::Red, "Page Read fail");
    return false;
  }
  frames_.IspTxBuf[0] = 0;
  frames_.IspWriteReadFrame(frames_.DataAddress(), 1, kPageBytes);
  return true;
}

void IspOperations::DoPageRead(IspView& view) {
  ClearStatus(view);
  if (!IspModeOn) {
    ShowStatus(view, StatusLabel::IspMode, StatusColour::Red, "read_code:isp mode is not exist");
    return;
  }
  ShowStatus(view, StatusLabel::IspMode, StatusColour::Black, "read_code:isp mode is  exist");
  const auto page = AskPageNumber(view);
  if (!page) return;
  ReadPage = *page;
  if (ReadChipPage(ReadPage, view)) ShowReadPage(frames_.IspRxBuf, ReadPage, view);
}
