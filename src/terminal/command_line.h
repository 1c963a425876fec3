// What was asked for on the command line. Knows options and their ranges; opens nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "vsk/vsk_model.h"

namespace terminal {

enum class Command { Program, Erase, Read, Compare, Check, Ports, Boards };

/// Addresses of a chip's flash, both included: 0..0xFFFF.
struct AddressRange {
  std::int32_t first = 0;
  std::int32_t last = 0xFFFF;
};

struct CommandLine {
  Command command{};
  std::string name;              // of the command
  std::string chip;              // its name, lower case; empty when none was given
  std::optional<VskChip> model;  // nothing for an RTD2120
  std::string file;
  std::string secondFile;             // of an RTD2120
  std::optional<AddressRange> pages;  // all when not given

  std::optional<std::int32_t> port;  // 1..0xFFFF
  std::string board;                 // number or name
  std::int16_t speed = 2;            // 1..10
  std::string codes;
  bool simulated = false;
  std::vector<std::string> faults;
  std::string flash;
  bool compare = true;  // after programming
  bool json = false;
  bool quiet = false;
  bool strict = false;
};

/// A command line that was read, or what to print in place of doing something.
struct ParsedLine {
  std::optional<CommandLine> line = {};
  std::string help = {};     // for the standard output
  std::string problem = {};  // for the standard error; the exit status is `kBadCommandLine`
};

/// `arguments`: without the program's own name. `version`: what "--version" prints.
ParsedLine ParseCommandLine(const std::vector<std::string>& arguments, const std::string& version);

}  // namespace terminal
