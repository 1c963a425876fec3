// How a run ended, as the window showed it.
#pragma once

#include <string>

struct RunResult {
  std::string text = {};     // empty when the chip was sent nothing that erases or programs
  std::string failure = {};  // the text that turned the colour red; empty when it is black

  bool operator==(const RunResult&) const = default;
};
