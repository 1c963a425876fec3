#include "terminal/listings.h"

#include <iomanip>
#include <nlohmann/json.hpp>
#include <utility>

#include "terminal/chip_command.h"
#include "terminal/port_words.h"
#include "terminal/rtd_job.h"
#include "terminal/vsk_job.h"
#include "text/hex_text.h"

namespace terminal {
namespace {

using Json = nlohmann::ordered_json;

class NoPort final : public PortIo {
 public:
  void DlPortWritePortUchar(std::uint32_t, std::uint8_t) override {}
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t) override { return std::nullopt; }
};

std::unique_ptr<Tool> ToolWithoutPort(const Surroundings& with, Narrator& narrator) {
  static NoPort port;
  return std::make_unique<Tool>(port, with.ticks, with.directories,
                                [&narrator](const std::string& message) { narrator.Say(message); });
}

/// With the installation's port and boards.
std::unique_ptr<Tool> InstalledTool(const Surroundings& with, Narrator& narrator) {
  FillProgramFolder(with.directories,
                    [&narrator](const std::string& message) { narrator.Say(message); });
  auto tool = ToolWithoutPort(with, narrator);
  tool->LoadConfiguration([] {});
  return tool;
}

void Print(const Json& object, std::ostream& out) {
  out << object.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
}

/// The pair's first file tells by its name what it is.
void ChooseModel(CommandLine& line) {
  if (!line.chip.empty()) return;
  const std::string name = UpperCase(line.file);
  const bool pair = name.ends_with(".H00") || name.ends_with(".B00");
  line.model = pair ? VskChip::Vsk630 : VskChip::Vsk830;
  line.chip = pair ? "vsk630" : "vsk830";
}

/// A table whose columns are as wide as what stands in them.
void PrintRows(const std::vector<std::pair<std::string, std::string>>& rows, std::ostream& out) {
  std::size_t width = 0;
  for (const auto& row : rows) width = std::max(width, Length(row.first));
  for (const auto& [name, value] : rows) {
    out << name << std::string(width - Length(name) + 2, ' ') << value << "\n";
  }
}

/// The lines behind the first one stand below it, indented; empty ones are left out.
std::string Indented(const std::string& text) {
  std::string indented;
  for (const char c : text) {
    const bool newLine = indented.ends_with('\n');
    if (c == '\n' && newLine) continue;
    indented += (newLine ? "        " : "") + std::string(1, c);
  }
  return indented;
}

}  // namespace

Outcome ListCheck(CommandLine line, const Surroundings& with, Narrator& narrator) {
  ChooseModel(line);
  const auto tool = ToolWithoutPort(with, narrator);
  Outcome outcome{.command = line.name, .chip = line.chip};
  ImageFacts facts;
  std::string notes;
  if (line.model) {
    VskJob job(*tool, line, narrator, [] { return false; });
    if (!job.Load(outcome)) outcome.failure = job.Refusal();
    notes = job.Notes();
    if (outcome.failure.empty()) facts = job.Facts();
  } else {
    RtdJob job(*tool, line, narrator);
    if (!job.Load(outcome)) outcome.failure = job.Refusal();
    notes = job.Notes();
    if (outcome.failure.empty()) facts = job.Facts().front();
  }
  if (line.strict && !notes.empty()) outcome.failure = kStrict;
  if (!outcome.failure.empty()) {
    outcome.status = kBadFile;
    return outcome;
  }

  if (line.json) {
    Json object{{"command", "check"}, {"chip", line.chip}, {"files", outcome.files}};
    object["size"] = outcome.size.value_or(0);
    object["maximumAddress"] = facts.maximumAddress;
    object["checksum"] = facts.checksum;
    if (line.model) object["crc"] = facts.crc;
    if (!notes.empty()) object["notes"] = notes;
    Print(object, with.out);
    return outcome;
  }
  std::vector<std::pair<std::string, std::string>> rows;
  for (const std::string& file : outcome.files) rows.emplace_back("MCU File", file);
  rows.emplace_back("Bytes", std::to_string(outcome.size.value_or(0)));
  rows.emplace_back("MaxAddress", facts.maximumAddress);
  rows.emplace_back("CheckSum", facts.checksum);
  if (line.model) rows.emplace_back("S/W CRC", facts.crc);
  PrintRows(rows, with.out);
  return outcome;
}

int ListPorts(const CommandLine& line, const Surroundings& with, Narrator& narrator) {
  const auto tool = InstalledTool(with, narrator);
  const auto inUse = static_cast<std::uint32_t>(line.port.value_or(tool->port.PortBase));
  const auto ports = SystemPorts(with.directories.programFolder / "Initial", inUse);
  if (line.json) {
    Json list = Json::array();
    for (const PortNote& port : ports) {
      Json entry{{"device", port.device}};
      if (port.base) entry["port"] = HexText(static_cast<std::int32_t>(*port.base));
      entry["inUse"] = port.base == inUse;
      entry["usable"] = port.base.has_value() && port.problem.empty();
      if (!port.problem.empty()) entry["problem"] = InTerminalWords(port.problem);
      list.push_back(std::move(entry));
    }
    Print({{"command", "ports"}, {"ports", std::move(list)}}, with.out);
    return kDone;
  }
  std::vector<std::pair<std::string, std::string>> rows;
  for (const PortNote& port : ports) {
    const std::string base = port.base ? HexText(static_cast<std::int32_t>(*port.base)) : "-";
    const std::string mark = port.base == inUse ? "* " : "  ";
    const std::string state =
        port.problem.empty() ? std::string() : ": " + Indented(InTerminalWords(port.problem));
    rows.emplace_back(mark + base, (port.device.empty() ? "GPIO lines" : port.device) + state);
  }
  PrintRows(rows, with.out);
  if (rows.empty()) narrator.Say("no port is known on this PC");
  return kDone;
}

int ListBoards(const CommandLine& line, const Surroundings& with, Narrator& narrator) {
  const auto tool = InstalledTool(with, narrator);
  const IspBoards& boards = tool->boards;
  const auto rows = static_cast<std::size_t>(
      std::clamp<int>(boards.BoardCount, boards.CurrentBoard + 1, IspBoards::kBoards));
  Json list = Json::array();
  for (std::size_t i = 0; i < rows; ++i) {
    const IspBoard& board = boards.BoardTable[i];
    const bool inUse = static_cast<std::size_t>(boards.CurrentBoard) == i;
    list.push_back(
        {{"number", i}, {"name", board.name}, {"inUse", inUse}, {"complete", board.Complete()}});
    if (line.json) continue;
    with.out << (inUse ? "* " : "  ") << std::setw(2) << i << "  " << board.name
             << (board.Complete() ? "" : "  (its row in the table is not complete)") << "\n";
  }
  if (line.json) Print({{"command", "boards"}, {"boards", std::move(list)}}, with.out);
  return kDone;
}

}  // namespace terminal
