// "GpioPort.csv", beside the board table: which GPIO lines stand for the bits of a port's
// registers. Knows nothing of the chips that there are.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/port_io.h"

/// A line that stands for a bit.
struct GpioRow {
  int number = 0;          // of the row in the file, from 1
  std::uint32_t base = 0;  // address of the port
  PortRegister which = PortRegister::Data;
  std::uint8_t bit = 0;  // as a mask
  std::string chip;      // its name, its label, or the path of its node
  std::string line;      // its number on the chip, or its name
};

struct GpioPortFile {
  std::filesystem::path path;
  std::vector<std::uint32_t> addresses;  // that it describes, 0..0xFFFF, each once
  std::vector<GpioRow> rows;

  /// A row that cannot be read. No base: nor is it known to which address it belongs.
  struct Fault {
    std::optional<std::uint32_t> base;
    std::string problem;
  };
  std::vector<Fault> faults;

  bool Describes(std::uint32_t base) const;
  std::vector<GpioRow> RowsOf(std::uint32_t base) const;
  /// The first fault of this address; empty when there is none.
  std::string ProblemOf(std::optional<std::uint32_t> base) const;
};

/// A file that is missing describes no address.
GpioPortFile ReadGpioPorts(const std::filesystem::path& folder);
