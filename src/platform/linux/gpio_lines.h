// The GPIO lines that the rows of one port name, found on the chips that there are. Requests none.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/gpio_chip.h"
#include "platform/linux/gpio_port_file.h"

/// A line, and the bits that it stands for.
struct PortLine {
  const GpioChip* chip = nullptr;
  std::uint32_t number = 0;  // on its chip
  std::string text = {};     // "line 17 (GPIO17) of /dev/gpiochip0"

  PortRegister which = PortRegister::Data;  // the register of its output bit
  std::uint8_t output = 0;                  // as a mask; 0: it is only an input
  std::uint8_t input = 0;                   // of the status register; 0: it is only an output
};

struct PortLines {
  std::vector<std::unique_ptr<GpioChip>> chips;
  std::vector<PortLine> lines;  // those that drive the control register first
  std::string problem;          // why the port cannot be reached now; empty when it can

  /// The nodes of its chips, joined by ", ".
  std::string Device() const;
};

PortLines FindPortLines(PortSystem& system, const GpioPortFile& file, std::uint32_t base);

/// Why the chip behind the node cannot be used.
std::string WhyNotOpened(PortSystem& system, const std::string& node, const Status& opened);

/// Why the line cannot be requested: somebody has it, or the call failed.
std::string WhyNotTaken(const PortLine& line, const Status& taken);
