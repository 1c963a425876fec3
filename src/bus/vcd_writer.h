// The two bus lines as a value change dump (VCD), the text format of logic-analyser programs.
#pragma once

#include <cstdint>
#include <ostream>
#include <string_view>

/// Writes the header at once. Both lines are high at time 0. Readers end at the last time that the
/// file has, so the end of the dump has a time of its own.
class VcdWriter {
 public:
  /// `timescale`: the unit of the times, for instance "1us". `moreVariables`: declarations of
  /// further variables that the caller writes itself; "c" and "d" are taken.
  VcdWriter(std::ostream& out, std::string_view timescale, std::string_view moreVariables = {});
  ~VcdWriter() { At(time_ + 1); }
  VcdWriter(const VcdWriter&) = delete;
  VcdWriter& operator=(const VcdWriter&) = delete;

  /// What is written from here on happens at `time`, which never goes back and is above 0.
  void At(std::uint64_t time);
  /// The lines' levels at `time`, as above. Writes changes only.
  void Levels(std::uint64_t time, bool sda, bool scl);

 private:
  std::ostream& out_;
  bool sda_ = true;
  bool scl_ = true;
  std::uint64_t time_ = 0;
};
