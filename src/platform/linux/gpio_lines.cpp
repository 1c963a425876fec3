#include "platform/linux/gpio_lines.h"

#include <algorithm>
#include <cerrno>
#include <map>

#include "platform/linux/gpio_messages.h"
#include "text/hex_text.h"

namespace {

std::string Numbered(std::uint32_t number, const std::string& name) {
  return std::to_string(number) + (name.empty() ? "" : " (" + name + ")");
}

/// The lines of a chip that have a name, or this one.
std::map<std::uint32_t, std::string> NamedLines(const GpioChip& chip,
                                                const std::string& name = {}) {
  std::map<std::uint32_t, std::string> named;
  for (std::uint32_t number = 0; number < chip.lines; ++number) {
    GpioChip::LineInfo info;
    if (chip.Look(number, info) || info.name.empty()) continue;
    if (name.empty() || info.name == name) named[number] = info.name;
  }
  return named;
}

std::vector<std::string> TextsOf(const std::map<std::uint32_t, std::string>& lines) {
  std::vector<std::string> texts;
  texts.reserve(lines.size());
  for (const auto& [number, name] : lines) texts.push_back(Numbered(number, name));
  return texts;
}

/// Goes through the rows until one has a problem.
class Finder {
 public:
  Finder(PortSystem& system, const GpioPortFile& file) : system_(system), file_(file) {}

  PortLines Find(const std::vector<GpioRow>& rows) {
    for (const GpioRow& row : rows) {
      row_ = gpio_messages::Row(file_.path, row.number);
      if (!Add(row)) break;
    }
    // As in a STOP, SCL goes first when lines are taken or given back.
    std::stable_partition(found_.lines.begin(), found_.lines.end(),
                          [](const PortLine& line) { return line.which == PortRegister::Control; });
    return std::move(found_);
  }

 private:
  bool Refuse(std::string problem) {
    found_.problem = std::move(problem);
    return false;
  }

  bool Add(const GpioRow& row);
  /// Null when it was refused.
  const GpioChip* ChipOf(const GpioRow& row);
  const GpioChip* Labelled(const std::string& label);
  const GpioChip* Keep(std::unique_ptr<GpioChip> chip);
  const GpioChip* NotOpened(const std::string& node, PortFault fault);
  /// False when it was refused.
  bool FindLine(const GpioRow& row, PortLine& line);
  bool FindNamed(const std::string& name, PortLine& line);
  bool NoSuchLine(const std::string& line, const GpioChip& chip);
  std::vector<std::string> ChipTexts();

  PortSystem& system_;
  const GpioPortFile& file_;
  std::string row_;  // the present one, for messages
  PortLines found_;
};

bool Finder::Add(const GpioRow& row) {
  PortLine line{.chip = ChipOf(row)};
  if (line.chip == nullptr || !FindLine(row, line)) return false;
  std::uint8_t PortLine::*const bit =
      row.which == PortRegister::Status ? &PortLine::input : &PortLine::output;
  PortLine* known = nullptr;
  for (PortLine& each : found_.lines) {
    if (each.chip == line.chip && each.number == line.number) known = &each;
    const bool sameRegister = row.which == PortRegister::Status || each.which == row.which;
    if (sameRegister && each.*bit == row.bit) {
      return Refuse(gpio_messages::NamedTwice(row_, "its bit"));
    }
  }
  if (known != nullptr && known->*bit != 0) {
    return Refuse(gpio_messages::NamedTwice(row_, line.text));
  }
  if (known == nullptr) known = &found_.lines.emplace_back(line);
  known->*bit = row.bit;
  if (row.which != PortRegister::Status) known->which = row.which;
  return true;
}

const GpioChip* Finder::ChipOf(const GpioRow& row) {
  const auto nodes = GpioNodes(system_);
  const bool isPath = row.chip.starts_with('/');
  const std::string node = isPath ? row.chip : "/dev/" + row.chip;
  if (!isPath && std::find(nodes.begin(), nodes.end(), node) == nodes.end()) {
    return Labelled(row.chip);
  }
  for (const auto& known : found_.chips) {
    if (known->node == node) return known.get();
  }
  GpioChip::Opened opened = GpioChip::Open(system_, node);
  if (opened.chip) return Keep(std::move(opened.chip));
  if (opened.fault.error != ENOENT) return NotOpened(node, opened.fault);
  Refuse(gpio_messages::NoSuchChip(row_, row.chip, ChipTexts()));
  return nullptr;
}

const GpioChip* Finder::Labelled(const std::string& label) {
  std::vector<std::unique_ptr<GpioChip>> labelled;
  std::vector<std::string> nodes;
  std::pair<std::string, PortFault> unopened;
  for (const std::string& node : GpioNodes(system_)) {
    GpioChip::Opened opened = GpioChip::Open(system_, node);
    if (!opened.chip && !unopened.second) unopened = {node, opened.fault};
    if (!opened.chip || opened.chip->label != label) continue;
    const auto same = [&opened](const auto& chip) { return chip->name == opened.chip->name; };
    if (std::any_of(labelled.begin(), labelled.end(), same)) continue;  // a second node of it
    nodes.push_back(node);
    labelled.push_back(std::move(opened.chip));
  }
  if (labelled.size() == 1) return Keep(std::move(labelled[0]));
  if (labelled.empty() && unopened.second) return NotOpened(unopened.first, unopened.second);
  Refuse(labelled.empty() ? gpio_messages::NoSuchChip(row_, label, ChipTexts())
                          : gpio_messages::SeveralChips(row_, label, nodes));
  return nullptr;
}

const GpioChip* Finder::Keep(std::unique_ptr<GpioChip> chip) {
  for (const auto& known : found_.chips) {
    if (known->name == chip->name) return known.get();
  }
  return found_.chips.emplace_back(std::move(chip)).get();
}

const GpioChip* Finder::NotOpened(const std::string& node, PortFault fault) {
  Refuse(WhyNotOpened(system_, node, fault));
  return nullptr;
}

bool Finder::FindLine(const GpioRow& row, PortLine& line) {
  const auto number = WholeDecimal(row.line);
  if (number && *number >= line.chip->lines) return NoSuchLine(row.line, *line.chip);
  if (!number && !FindNamed(row.line, line)) return false;
  if (number) line.number = *number;
  GpioChip::LineInfo info;
  const PortFault fault = line.chip->Look(line.number, info);
  line.text = "line " + Numbered(line.number, info.name) + " of " + line.chip->node;
  if (fault) return Refuse(gpio_messages::NotTaken(line.text, fault));
  return !info.used || Refuse(gpio_messages::Held(line.text, info.consumer));
}

bool Finder::FindNamed(const std::string& name, PortLine& line) {
  const auto lines = NamedLines(*line.chip, name);
  if (lines.empty()) return NoSuchLine(name, *line.chip);
  line.number = lines.begin()->first;
  return lines.size() == 1 ||
         Refuse(gpio_messages::SeveralLines(row_, name, line.chip->node, TextsOf(lines)));
}

bool Finder::NoSuchLine(const std::string& line, const GpioChip& chip) {
  return Refuse(gpio_messages::NoSuchLine(row_, line, chip, TextsOf(NamedLines(chip))));
}

std::vector<std::string> Finder::ChipTexts() {
  std::vector<std::string> texts;
  for (const std::string& node : GpioNodes(system_)) {
    const GpioChip::Opened opened = GpioChip::Open(system_, node);
    texts.push_back(opened.chip ? opened.chip->Text() : node);
  }
  return texts;
}

}  // namespace

std::string PortLines::Device() const {
  std::vector<std::string> nodes;
  for (const auto& chip : chips) nodes.push_back(chip->node);
  return Joined(nodes);
}

PortLines FindPortLines(PortSystem& system, const GpioPortFile& file, std::uint32_t base) {
  PortLines none;
  none.problem = file.ProblemOf(base);
  if (!none.problem.empty()) return none;
  const auto rows = file.RowsOf(base);
  if (!rows.empty()) return Finder(system, file).Find(rows);
  none.problem = gpio_messages::NoLines(file.path, base);
  return none;
}

std::string WhyNotOpened(PortSystem& system, const std::string& node, PortFault fault) {
  return gpio_messages::ChipNotOpened(node, fault, system.GroupOf(node), system.IsRoot());
}

std::string WhyNotTaken(const PortLine& line, PortFault failed) {
  GpioChip::LineInfo info;
  const bool held = failed.error == EBUSY && !line.chip->Look(line.number, info);
  return held ? gpio_messages::Held(line.text, info.consumer)
              : gpio_messages::NotTaken(line.text, failed);
}
