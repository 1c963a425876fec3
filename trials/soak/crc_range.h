// Which range an RTD2120 computes its CRC over, as the frames that it took have set it.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "rtd2120/crc8.h"
#include "simulator/wire_decoder.h"

/// A frame that sets one end of the range and is refused leaves that end where an earlier frame put
/// it: the chip then answers truly for other cells than those that were asked for.
class CrcRange final : public simulator::BusListener {
 public:
  void Started(bool) override { taken_.clear(); }
  void Byte(std::uint8_t value, bool fromTarget, bool acknowledged) override {
    if (fromTarget || !acknowledged || taken_.size() > 3) return;
    taken_.push_back(value);
    if (taken_.size() < 3 || taken_[0] != 0x96) return;
    std::uint16_t* end = taken_[1] == 0x92 ? &first_ : taken_[1] == 0xA0 ? &last_ : nullptr;
    if (end == nullptr) return;
    *end = static_cast<std::uint16_t>(taken_.size() == 3 ? value << 8 : (*end & 0xFF00) | value);
  }
  void Stopped() override {}

  bool Covers(std::size_t first, std::size_t last) const {
    return first_ == first && last_ == last;
  }
  std::uint8_t CrcOf(std::span<const std::uint8_t> cells) const {
    if (first_ > last_) return 0;
    return tongxun2120::Crc8(cells.subspan(first_, std::size_t{last_} - first_ + 1));
  }

 private:
  std::vector<std::uint8_t> taken_;  // the first bytes of this frame that were acknowledged
  std::uint16_t first_ = 0;
  std::uint16_t last_ = 0;
};
