// How a run ended, as the window showed it.
#pragma once

#include <string>

struct RunResult {
  std::string text = {};     // empty when the chip was sent nothing that erases or programs
  std::string failure = {};  // the text that turned the colour red; empty when it is black
  std::string place = {};    // of the failure, where it is known, for instance "bank 1 page 2A"
  /// The chip left unanswered what the text rests upon, as one that is unplugged does: the reading
  /// of its CRC, or the command to erase.
  bool silent = false;

  bool operator==(const RunResult&) const = default;
};
