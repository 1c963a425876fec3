#include "bus/vcd_writer.h"

VcdWriter::VcdWriter(std::ostream& out, std::string_view timescale, std::string_view moreVariables)
    : out_(out) {
  // Without the time in front, readers take the first change for the beginning, and lose a START.
  out_ << "$timescale " << timescale << " $end\n$scope module isp $end\n"
       << "$var wire 1 d SDA $end\n$var wire 1 c SCL $end\n"
       << moreVariables << "$upscope $end\n$enddefinitions $end\n#0\n$dumpvars\n1d\n1c\n$end\n";
}

void VcdWriter::At(std::uint64_t time) {
  out_ << '#' << time << '\n';
  time_ = time;
}

void VcdWriter::Levels(std::uint64_t time, bool sda, bool scl) {
  if (sda == sda_ && scl == scl_) return;
  At(time);
  if (sda != sda_) out_ << (sda ? "1d\n" : "0d\n");
  if (scl != scl_) out_ << (scl ? "1c\n" : "0c\n");
  sda_ = sda;
  scl_ = scl;
}
