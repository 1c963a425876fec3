// Entering and quitting ISP mode.
#include <algorithm>

#include "vsk/isp_operations.h"

namespace {

constexpr int kMostCodes = 9;  // what the parameter table holds
constexpr int kQuit = 0x48;

}  // namespace

// S code1&FE code2 .. coden P
bool IspOperations::EnterIspMode(IspView& view) {
  if (IspModeOn) {
    ShowStatus(view, StatusLabel::IspMode, StatusColour::Black, "isp mode is already exist");
    return false;
  }
  const auto& params = frames_.IspParams;
  const int codes = std::min<int>(params[1], kMostCodes);
  if (codes > 1) std::copy_n(params.begin() + 3, codes - 1, frames_.IspTxBuf.begin());
  int count = codes - 1;
  IspModeOn = frames_.IspWriteFrame(params[2], count, true);
  if (IspModeOn) {
    ShowStatus(view, StatusLabel::IspMode, StatusColour::Black, "isp mode is exist");
  } else {
    ShowStatus(view, StatusLabel::IspMode, StatusColour::Red, "isp mode is no exist");
  }
  return IspModeOn;
}

// S C 48 00 P     the chip leaves at 48 and no longer acknowledges 00
bool IspOperations::QuitIspMode(IspView& view) {
  const bool stillListening = SendCommand(kQuit, 0x00);
  if (stillListening) {
    ShowStatus(view, StatusLabel::IspMode, StatusColour::Red, "isp mode is not out");
    view.DeselectQuitOption();
  } else {
    IspModeOn = false;
    ShowStatus(view, StatusLabel::IspMode, StatusColour::Black, "isp mode is out");
    view.SelectQuitOption();
  }
  return stillListening;
}

// S C command argument P
bool IspOperations::SendCommand(int command, int argument) {
  frames_.IspTxBuf[0] = static_cast<std::int16_t>(command);
  frames_.IspTxBuf[1] = static_cast<std::int16_t>(argument);
  int count = 2;
  return frames_.IspWriteFrame(frames_.CommandAddress(), count, true);
}

// S A 00 00 P
bool IspOperations::SendFollowUp() {
  frames_.IspTxBuf[0] = 0;
  frames_.IspTxBuf[1] = 0;
  int count = 2;
  return frames_.IspWriteFrame(frames_.DataAddress(), count, true);
}
