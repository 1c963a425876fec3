#include "rtd2120/rtd_operations.h"

#include <algorithm>
#include <cmath>

#include "rtd2120/crc8.h"
#include "text/hex_text.h"

namespace tongxun2120 {
namespace {

std::string BankText(Bank bank) {
  return bank == Bank::First ? "Program BANK 1  " : "Program BANK 2  ";
}

std::string PlaceOf(Bank bank, int page) {
  return std::string(bank == Bank::First ? "bank 1" : "bank 2") + " page " + HexText(page);
}

}  // namespace

void RtdOperations::RtdBuildPages(std::int32_t maximum) {
  for (std::size_t page = 0; page < 256; ++page) {
    auto& row = link_.RtdPageTable[page];
    row[0] = kIspSlave;
    row[1] = kPageData;
    std::fill_n(row.begin() + kFirstData, kPageBytes, std::uint8_t{0xFF});
  }
  const auto last = static_cast<std::size_t>(std::clamp(maximum, 0, 0xFFFF));
  for (std::size_t a = 0; a <= last; ++a) {
    link_.RtdPageTable[a / kPageBytes][kFirstData + a % kPageBytes] = images_.RtdLoadBuffer[a];
  }
}

int RtdOperations::RtdCalcCrc(RtdLog& log) {
  std::uint8_t crc = 0;
  for (std::size_t a = 0; a <= static_cast<std::size_t>(RtdMaxAddr); ++a) {
    crc = Crc8Byte(crc, link_.RtdPageTable[a / kPageBytes][kFirstData + a % kPageBytes]);
  }
  log.AppendLine("Calculate CRC   0x" + HexText(crc));
  return crc;
}

/// Repeats `test` until it holds. False when it did not within `kLongestWait_ms`.
template <typename Test>
bool RtdOperations::WaitUntil(Test test) {
  const std::uint32_t begin = ticks_.GetTickCount();
  while (!test()) {
    if (ticks_.GetTickCount() - begin >= kLongestWait_ms) return false;
  }
  return true;
}

bool RtdOperations::WaitForControlBit(int mask) {
  return WaitUntil(
      [&] { return link_.ReadStatus(kIspControl) && (link_.RtdRxBuf[0] & mask) == 0; });
}

/// Done when the running bit is 0, or when a read that follows one that was running shows done.
bool RtdOperations::WaitForCrc() {
  bool wasRunning = false;
  return WaitUntil([&] {
    if (!link_.ReadStatus(kCrcControl)) return false;
    const int status = link_.RtdRxBuf[0];
    if (wasRunning && (status & kCrcDone) != 0) return true;
    wasRunning = (status & kCrcRunning) != 0;
    return !wasRunning;
  });
}

// S 94 90 40|60 P
void RtdOperations::SelectBank(Bank bank) {
  link_.WriteRegister(kIspControl, bank == Bank::First ? kFirstBank : kSecondBank);
}

// bank; S 96 92 00 00 P; S 96 A0 high low P; [90] until bit 3 is 0; S 94 A2 80 P; [A2]..; [A3]
std::optional<int> RtdOperations::RtdReadCrc(Bank bank, RtdLog& log) {
  SelectBank(bank);
  link_.WriteAddress(kStartAddress, 0x00, 0x00);
  link_.WriteAddress(kCrcEndAddress, EndHigh(), EndLow());
  bool answered = WaitForControlBit(kSettingCrcRange);
  if (answered) {
    link_.WriteRegister(kCrcControl, kCrcRequest);
    answered = WaitForCrc() && link_.ReadStatus(kCrcResult);
  }
  if (!answered) {
    log.AppendRedLine(kLinkError);
    return std::nullopt;
  }
  const int crc = link_.RtdRxBuf[0];
  log.AppendLine("Read CRC         0x" + HexText(crc));
  return crc;
}

// S 94 90 C0 P; [90] until bit 7 is 0
bool RtdOperations::RtdEraseChip(RtdLog& log) {
  if (!link_.WriteRegister(kIspControl, kErase)) log.NoteSilence();
  if (!WaitForControlBit(kErasing)) {
    log.AppendRedLine(kLinkError);
    return false;
  }
  log.AppendLine("Erase MCU OK.");
  return true;
}

// bank; per page: S 96 92 page 00 P; S 94 94 data.. P; [90] until bit 4 is 0
void RtdOperations::RtdProgramBank(Bank bank, RtdLog& log) {
  RtdStatusBase = log.Text();
  SelectBank(bank);
  const int pages = EndHigh() + 1;
  for (int page = 0; page < pages; ++page) {
    log.Programmed(100 * page / pages);
    link_.RtdPageIndex = static_cast<std::int16_t>(page);
    link_.WriteAddress(kStartAddress, page, 0x00);
    link_.RtdWritePage(kPageTransfer, kWithStart | kWithStop);

    const auto percent = static_cast<int>(std::nearbyint(page * 100.0 / pages)) + 1;
    log.Show(RtdStatusBase + BankText(bank) + " " + std::to_string(percent) + " %");
    if (!link_.RtdWaitBitsClear(kIspControl, kProgramming)) {
      return log.AppendLinkError(PlaceOf(bank, page));
    }
  }
  log.Show(RtdStatusBase + BankText(bank) + " 100 %\r\n");
}

}  // namespace tongxun2120
