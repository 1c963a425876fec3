// The chip-level operations on an RTD2120: erase, program a bank, CRC-8. ISP mode must have been
// entered. Each reports in the status box.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/tick_counter.h"
#include "rtd2120/rtd_images.h"
#include "rtd2120/rtd_link.h"
#include "rtd2120/rtd_view.h"

namespace tongxun2120 {

/// The bound of every wait here but that for a page, which is `RtdWaitBitsClear`'s.
inline constexpr std::uint32_t kLongestWait_ms = 10'000;

class RtdOperations {
 public:
  RtdOperations(RtdLink& link, TickCounter& ticks, RtdImages& images)
      : link_(link), ticks_(ticks), images_(images) {}

  std::int32_t RtdMaxAddr = 0;  // highest address 0..0xFFFF of the image being written
  std::string RtdStatusBase;    // the status text when programming began

  /// Lays `RtdLoadBuffer`[0..maximum] out as whole write transactions, padded with 0xFF.
  void RtdBuildPages(std::int32_t maximum);
  /// CRC-8 of the page data over 0..`RtdMaxAddr`.
  int RtdCalcCrc(RtdView& view);
  /// The chip's own CRC over the same range. Nothing when the chip did not answer, or stayed busy
  /// for too long: a link error then stands in the status box.
  std::optional<int> RtdReadCrc(Bank bank, RtdView& view);
  /// False when the chip stayed busy for too long: a link error then stands in the status box.
  bool RtdEraseChip(RtdView& view);
  /// Programs all pages of the bank. False when a page did not finish: it ends with a link error.
  bool RtdProgramBank(Bank bank, RtdView& view);

 private:
  int EndHigh() const { return RtdMaxAddr / 256; }
  int EndLow() const { return RtdMaxAddr % 256; }
  void SelectBank(Bank bank);
  template <typename Test>
  bool WaitUntil(Test test);
  bool WaitForControlBit(int mask);
  bool WaitForCrc();

  RtdLink& link_;
  TickCounter& ticks_;
  RtdImages& images_;
};

}  // namespace tongxun2120
