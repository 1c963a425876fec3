// The chip-level operations on an RTD2120: erase, program a bank, CRC-8. ISP mode must have been
// entered. Each reports in the log of the run.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/tick_counter.h"
#include "rtd2120/rtd_images.h"
#include "rtd2120/rtd_link.h"
#include "rtd2120/rtd_log.h"

namespace tongxun2120 {

/// The bound of every wait here but that for a page, which is `RtdWaitBitsClear`'s.
inline constexpr std::uint32_t kLongestWait_ms = 10'000;

class RtdOperations {
 public:
  RtdOperations(RtdLink& link, TickCounter& ticks, RtdImages& images)
      : link_(link), ticks_(ticks), images_(images) {}

  std::int32_t RtdMaxAddr = 0;  // highest address 0..0xFFFF of the image being written
  std::string RtdStatusBase;    // the log when programming began

  /// Lays `RtdLoadBuffer`[0..maximum] out as whole write transactions, padded with 0xFF. `maximum`
  /// is taken as the nearest of 0..0xFFFF.
  void RtdBuildPages(std::int32_t maximum);
  /// CRC-8 of the page data over 0..`RtdMaxAddr`: 0..255.
  int RtdCalcCrc(RtdLog& log);
  /// The chip's own CRC over the same range, 0..255. Nothing when the chip did not answer, or
  /// stayed busy for too long: a link error then stands in the log.
  std::optional<int> RtdReadCrc(Bank bank, RtdLog& log);
  /// False when the chip stayed busy for too long: a link error then stands in the log.
  bool RtdEraseChip(RtdLog& log);
  /// Programs all pages of the bank; ends with a link error when a page does not finish.
  void RtdProgramBank(Bank bank, RtdLog& log);

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
