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
    const auto info = chip.Look(number);
    if (info->name.empty()) continue;
    if (name.empty() || info->name == name) named[number] = info->name;
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
      found_.problem = Add(row).Reason();
      if (!found_.problem.empty()) break;
    }
    // As in a STOP, SCL goes first when lines are taken or given back.
    std::stable_partition(found_.lines.begin(), found_.lines.end(),
                          [](const PortLine& line) { return line.which == PortRegister::Control; });
    return std::move(found_);
  }

 private:
  Status Add(const GpioRow& row);
  Result<const GpioChip*> ChipOf(const GpioRow& row);
  Result<const GpioChip*> Labelled(const std::string& label);
  const GpioChip* Keep(std::unique_ptr<GpioChip> chip);
  Result<PortLine> FindLine(const GpioRow& row, const GpioChip& chip);
  Result<std::uint32_t> NumberOf(const std::string& line, const GpioChip& chip);
  std::vector<std::string> ChipTexts();

  PortSystem& system_;
  const GpioPortFile& file_;
  std::string row_;  // the present one, for messages
  PortLines found_;
};

Status Finder::Add(const GpioRow& row) {
  auto chip = ChipOf(row);
  if (!chip.Ok()) return chip;
  auto line = FindLine(row, **chip);
  if (!line.Ok()) return line;
  std::uint8_t PortLine::*const bit =
      row.which == PortRegister::Status ? &PortLine::input : &PortLine::output;
  PortLine* known = nullptr;
  for (PortLine& each : found_.lines) {
    if (each.chip == line->chip && each.number == line->number) known = &each;
    const bool sameRegister = row.which == PortRegister::Status || each.which == row.which;
    if (sameRegister && each.*bit == row.bit) {
      return Status::Failed(gpio_messages::NamedTwice(row_, "its bit"));
    }
  }
  if (known != nullptr && known->*bit != 0) {
    return Status::Failed(gpio_messages::NamedTwice(row_, line->text));
  }
  if (known == nullptr) known = &found_.lines.emplace_back(*line);
  known->*bit = row.bit;
  if (row.which != PortRegister::Status) known->which = row.which;
  return {};
}

Result<const GpioChip*> Finder::ChipOf(const GpioRow& row) {
  const auto nodes = GpioNodes(system_);
  const bool isPath = row.chip.starts_with('/');
  const std::string node = isPath ? row.chip : "/dev/" + row.chip;
  if (!isPath && std::find(nodes.begin(), nodes.end(), node) == nodes.end()) {
    return Labelled(row.chip);
  }
  for (const auto& known : found_.chips) {
    if (known->node == node) return known.get();
  }
  auto opened = GpioChip::Open(system_, node);
  if (opened.Ok()) return Keep(std::move(*opened));
  return Status::Failed(opened.Error() == ENOENT
                            ? gpio_messages::NoSuchChip(row_, row.chip, ChipTexts())
                            : WhyNotOpened(system_, node, opened));
}

Result<const GpioChip*> Finder::Labelled(const std::string& label) {
  std::vector<std::unique_ptr<GpioChip>> labelled;
  std::vector<std::string> nodes;
  Status others;
  for (const std::string& node : GpioNodes(system_)) {
    auto opened = GpioChip::Open(system_, node);
    if (!opened.Ok()) others.Also(Status::Failed(WhyNotOpened(system_, node, opened)));
    if (!opened.Ok() || (*opened)->label != label) continue;
    const auto same = [&opened](const auto& chip) { return chip->name == (*opened)->name; };
    if (std::any_of(labelled.begin(), labelled.end(), same)) continue;  // a second node of it
    nodes.push_back(node);
    labelled.push_back(std::move(*opened));
  }
  if (labelled.size() == 1) return Keep(std::move(labelled[0]));
  if (labelled.empty() && !others.Ok()) return others;
  return Status::Failed(labelled.empty() ? gpio_messages::NoSuchChip(row_, label, ChipTexts())
                                         : gpio_messages::SeveralChips(row_, label, nodes));
}

const GpioChip* Finder::Keep(std::unique_ptr<GpioChip> chip) {
  for (const auto& known : found_.chips) {
    if (known->name == chip->name) return known.get();
  }
  return found_.chips.emplace_back(std::move(chip)).get();
}

Result<PortLine> Finder::FindLine(const GpioRow& row, const GpioChip& chip) {
  const auto number = NumberOf(row.line, chip);
  if (!number.Ok()) return number;
  const auto info = chip.Look(*number);
  PortLine line{.chip = &chip,
                .number = *number,
                .text = "line " + Numbered(*number, info->name) + " of " + chip.node};
  if (!info.Ok()) return Status::Failed(gpio_messages::NotTaken(line.text, info));
  if (info->used) return Status::Failed(gpio_messages::Held(line.text, info->consumer));
  return line;
}

Result<std::uint32_t> Finder::NumberOf(const std::string& line, const GpioChip& chip) {
  const auto number = WholeDecimal(line);
  if (number && *number < chip.lines) return *number;
  const auto lines = number ? std::map<std::uint32_t, std::string>() : NamedLines(chip, line);
  if (lines.size() == 1) return lines.begin()->first;
  return Status::Failed(lines.empty()
                            ? gpio_messages::NoSuchLine(row_, line, chip, TextsOf(NamedLines(chip)))
                            : gpio_messages::SeveralLines(row_, line, chip.node, TextsOf(lines)));
}

std::vector<std::string> Finder::ChipTexts() {
  std::vector<std::string> texts;
  for (const std::string& node : GpioNodes(system_)) {
    const auto chip = GpioChip::Open(system_, node);
    texts.push_back(chip.Ok() ? (*chip)->Text() : node);
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

std::string WhyNotOpened(PortSystem& system, const std::string& node, const Status& opened) {
  return gpio_messages::ChipNotOpened(node, opened, system.GroupOf(node), system.IsRoot());
}

std::string WhyNotTaken(const PortLine& line, const Status& taken) {
  if (taken.Error() == EBUSY) {
    const auto info = line.chip->Look(line.number);
    if (info.Ok()) return gpio_messages::Held(line.text, info->consumer);
  }
  return gpio_messages::NotTaken(line.text, taken);
}
