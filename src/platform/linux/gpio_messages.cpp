#include "platform/linux/gpio_messages.h"

#include <cerrno>

#include "platform/files.h"
#include "platform/linux/port_messages.h"
#include "text/hex_text.h"

namespace {

using port_messages::Hex;

std::string Begun(std::string sentence) {
  if (sentence[0] >= 'a' && sentence[0] <= 'z') sentence[0] += 'A' - 'a';
  return sentence;
}

}  // namespace

namespace gpio_messages {

std::string UnreadableFile(const std::filesystem::path& file, const std::string& problem) {
  return PathText(file) + " cannot be read (" + problem +
         "), so that no GPIO port is known. Make the file readable.";
}

std::string UnreadableRow(const std::filesystem::path& file, int row, std::size_t field,
                          const std::string& text, const std::string& must) {
  return Begun(Row(file, row)) + " cannot be read: field " + std::to_string(field) + " is \"" +
         text + "\" and " + must + ". Mend the row.";
}

std::string Row(const std::filesystem::path& file, int row) {
  return "row " + std::to_string(row) + " of " + PathText(file);
}

std::string NamedTwice(const std::string& row, const std::string& what) {
  return Begun(row) + " names " + what +
         " a second time. A bit has one line, and a line stands for one output and one status bit "
         "at the most. Mend the row.";
}

std::string NoLines(const std::filesystem::path& file, std::uint32_t base) {
  return PathText(file) + " has the address of port " + Hex(base) +
         ", but no line behind it. Add the rows of its lines.";
}

std::string NoSuchChip(const std::string& row, const std::string& chip,
                       const std::vector<std::string>& chips) {
  const std::string none = "There is no GPIO chip \"" + chip + "\", which " + row + " names. ";
  if (chips.empty()) {
    return none +
           "Linux knows no GPIO chip on this machine. Load the driver of the chip, or plug its "
           "adapter in.";
  }
  return none + "These chips exist: " + Joined(chips) + ". Name one of them in the row.";
}

std::string SeveralChips(const std::string& row, const std::string& label,
                         const std::vector<std::string>& nodes) {
  return "Several GPIO chips have the label \"" + label + "\", which " + row +
         " names: " + Joined(nodes) + ". Name one of these paths in the row.";
}

std::string ChipNotOpened(const std::string& node, const Status& opened, const std::string& group,
                          bool isRoot) {
  if (opened.Error() == ENOTTY) {
    return node + " is no GPIO chip (" + opened.Reason() + "). Name another path in the file.";
  }
  if (opened.Error() != EACCES && opened.Error() != EPERM) {
    return node + " cannot be opened (" + opened.Reason() + ").";
  }
  if (isRoot) {
    return node + " is refused even to root (" + opened.Reason() +
           "). A container does so: run the program outside of it.";
  }
  return port_messages::NoPermission(
      node, group,
      "install a udev rule for this one chip: the page on GPIO in the manual has one.");
}

std::string NoSuchLine(const std::string& row, const std::string& line, const GpioChip& chip,
                       const std::vector<std::string>& named) {
  return chip.Text() + " has no line \"" + line + "\", which " + row +
         " names. Its lines have the numbers 0 to " + std::to_string(chip.lines - 1) +
         (named.empty() ? ", and no names" : ", and names: " + Joined(named)) +
         ". Name one of them in the row.";
}

std::string SeveralLines(const std::string& row, const std::string& name, const std::string& node,
                         const std::vector<std::string>& lines) {
  return "Several lines of " + node + " have the name \"" + name + "\", which " + row +
         " names: " + Joined(lines) + ". Give the number of one of them in the row.";
}

std::string Held(const std::string& line, const std::string& consumer) {
  if (consumer.empty()) {
    return Begun(line) +
           " is in use, and the kernel does not say by whom: its pin may serve another function of "
           "the board. Turn that function off, or choose another line.";
  }
  return Begun(line) + " is held by another program or driver: " + consumer +
         ". End the program, or unload the driver, or choose another line.";
}

std::string NoOutput(const std::string& line, const Status& driven) {
  return Begun(line) + " cannot be an output (" + driven.Reason() +
         "). Wire the target to another line, and name that one in the file.";
}

std::string NotTaken(const std::string& line, const Status& taken) {
  return Begun(line) + " could not be taken (" + taken.Reason() + ").";
}

}  // namespace gpio_messages
