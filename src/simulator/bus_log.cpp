#include "simulator/bus_log.h"

#include "text/hex_text.h"

namespace simulator {

void FrameLog::Started(bool repeated) {
  if (repeated && !lines_.empty()) {
    lines_.back() += " Sr";
  } else {
    lines_.emplace_back("S");
  }
}

void FrameLog::Byte(std::uint8_t value, bool fromTarget, bool acknowledged) {
  if (lines_.empty()) return;  // listening began inside a frame
  const std::string text = fileop::HexByte(value);
  lines_.back() += fromTarget ? " [" + text + "]" : " " + text;
  if (!acknowledged) lines_.back() += "-";
}

void FrameLog::Stopped() {
  if (!lines_.empty()) lines_.back() += " P";
}

void FrameCounters::Byte(std::uint8_t, bool fromTarget, bool acknowledged) {
  ++bytes;
  if (!fromTarget && !acknowledged) ++refused;
}

void VcdRecorder::Levels(std::uint64_t access, bool sda, bool scl) {
  if (!before_) before_ = access - 1;
  vcd_.Levels(access - *before_, sda, scl);
}

}  // namespace simulator
