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

VcdRecorder::VcdRecorder(std::ostream& out) : out_(out) {
  out_ << "$timescale 1us $end\n$scope module isp $end\n$var wire 1 d SDA $end\n"
          "$var wire 1 c SCL $end\n$upscope $end\n$enddefinitions $end\n$dumpvars\n1d\n1c\n$end\n";
}

void VcdRecorder::Levels(std::uint64_t access, bool sda, bool scl) {
  if (sda == sda_ && scl == scl_) return;
  out_ << '#' << access << '\n';
  if (sda != sda_) out_ << (sda ? "1d\n" : "0d\n");
  if (scl != scl_) out_ << (scl ? "1c\n" : "0c\n");
  sda_ = sda;
  scl_ = scl;
}

}  // namespace simulator
