#include "image/code_buffers.h"

#include <algorithm>
#include <numeric>

#include "image/crc16.h"

namespace tongxun {
namespace {

std::uint16_t SumBytes(std::uint16_t sum, std::span<const std::uint8_t> bytes) {
  return static_cast<std::uint16_t>(std::accumulate(bytes.begin(), bytes.end(), unsigned{sum}));
}

}  // namespace

std::span<const std::uint8_t> UsedCells(std::span<const std::uint8_t> cells, std::int32_t maximum) {
  const auto used = static_cast<std::size_t>(std::max(maximum + 1, 0));
  return cells.first(std::min(used, cells.size()));
}

void CodeBuffers::CrcCode() { CodeCrc = CrcBytes(kCrcStart, UsedCells(CodeBuffer, CodeMax)); }

void CodeBuffers::CrcBanks() {
  CodeCrc = CrcBytes(kCrcStart, UsedCells(CodeBank0, CodeBank0Max));
  CodeCrc = CrcBytes(CodeCrc, UsedCells(CodeBank1, CodeBank1Max));
}

void CodeBuffers::SumCode() { CodeSum = SumBytes(0, UsedCells(CodeBuffer, CodeMax)); }

void CodeBuffers::SumBanks() {
  CodeSum = SumBytes(0, UsedCells(CodeBank0, CodeBank0Max));
  CodeSum = SumBytes(CodeSum, UsedCells(CodeBank1, CodeBank1Max));
}

void CodeBuffers::CheckCode() {
  CrcCode();
  SumCode();
}

void CodeBuffers::SumRtdBank(int bank) {
  const RtdCells& cells = bank == 1 ? RtdBank1Buffer : RtdBank2Buffer;
  RtdBankSum = SumBytes(0, UsedCells(cells, 0xFFFF));
}

}  // namespace tongxun
