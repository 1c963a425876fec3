// What came of a command: the exit status, and the result for people and for programs.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "terminal/exit_status.h"

namespace terminal {

/// Where a chip and a file differ.
struct Difference {
  std::size_t count = 0;     // bytes
  std::int32_t address = 0;  // of the first
  int chip = 0;              // the first's byte in either
  int file = 0;
};

/// Texts that do not apply are empty. Numbers in texts are hexadecimal.
struct Outcome {
  int status = kDone;
  std::string command = {};
  std::string chip = {};
  std::vector<std::string> files = {};
  std::optional<std::size_t> size = {};      // bytes of the image, or that were read
  std::string crc = {};                      // the image's
  std::string chipCrc = {};                  // as the chip reported it
  std::string shown = {};                    // the last status text
  std::optional<std::size_t> compared = {};  // bytes that were read back and compared
  std::optional<Difference> difference = {};
  bool begun = false;                    // the work on the chip
  std::string failure = {};              // what failed
  std::string place = {};                // and where
  std::string note = {};                 // what the operator should know of a success
  std::chrono::milliseconds duration{};  // of the work on the chip
  std::string port = {};
  std::string board = {};
  bool simulated = false;

  bool Good() const { return status == kDone; }
};

/// One line, for people.
std::string ResultText(const Outcome& outcome);
/// One object, for programs: what ResultText says in fields of their own.
std::string ResultJson(const Outcome& outcome);

}  // namespace terminal
