// The two bus lines as a value change dump (VCD), the text format of logic-analyser programs.
#pragma once

#include <cstdint>
#include <ostream>
#include <string_view>

/// Writes the header at once. Both lines are high at time 0.
class BusDump {
 public:
  /// `timescale`: the unit of the times, for instance "1us". `moreVariables`: declarations of
  /// further variables that the caller writes itself; "c" and "d" are taken.
  BusDump(std::ostream& out, std::string_view timescale, std::string_view moreVariables = {});

  /// The lines' levels at `time`, which grows from call to call and is above 0. Writes changes
  /// only.
  void Levels(std::uint64_t time, bool sda, bool scl);

 private:
  std::ostream& out_;
  bool sda_ = true;
  bool scl_ = true;
};
