// What the operator is told when a port of GPIO lines cannot be used: what was tried, why it failed
// and what helps. Texts only.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/linux/gpio_chip.h"

namespace gpio_messages {

/// `problem`: a phrase.
std::string UnreadableFile(const std::filesystem::path& file, const std::string& problem);

/// `field`: from 1, with its `text`. `must`: what it must be, as "must be ..".
std::string UnreadableRow(const std::filesystem::path& file, int row, std::size_t field,
                          const std::string& text, const std::string& must);

/// "row 3 of .../GpioPort.csv": what the functions below are told as `row`.
std::string Row(const std::filesystem::path& file, int row);

/// `what`: the bit or the line that the row names and that an earlier row has named already.
std::string NamedTwice(const std::string& row, const std::string& what);

/// The file has the address, and no line behind it.
std::string NoLines(const std::filesystem::path& file, std::uint32_t base);

/// `chips`: that there are, as texts.
std::string NoSuchChip(const std::string& row, const std::string& chip,
                       const std::vector<std::string>& chips);

/// Several `nodes` have the label that the row names.
std::string SeveralChips(const std::string& row, const std::string& label,
                         const std::vector<std::string>& nodes);

/// `group`: of the node; empty when it is not known.
std::string ChipNotOpened(const std::string& node, const Status& opened, const std::string& group,
                          bool isRoot);

/// `named`: the chip's lines that have a name, as texts.
std::string NoSuchLine(const std::string& row, const std::string& line, const GpioChip& chip,
                       const std::vector<std::string>& named);

/// Several `lines` of the chip have the name that the row names.
std::string SeveralLines(const std::string& row, const std::string& name, const std::string& node,
                         const std::vector<std::string>& lines);

/// `line`: "line 17 (GPIO17) of /dev/gpiochip0". `consumer`: the kernel's word on who has it; may
/// be empty.
std::string Held(const std::string& line, const std::string& consumer);

std::string NoOutput(const std::string& line, const Status& driven);

/// Another call failed while the port was being taken.
std::string NotTaken(const std::string& line, const Status& taken);

}  // namespace gpio_messages
