#include "terminal/listings.h"

#include <iomanip>
#include <nlohmann/json.hpp>
#include <utility>

#include "platform/port_io.h"
#include "terminal/chip_command.h"
#include "terminal/port_words.h"
#include "terminal/refusals.h"
#include "terminal/rtd_job.h"
#include "terminal/vsk_job.h"
#include "text/hex_text.h"

namespace terminal {
namespace {

using Json = nlohmann::ordered_json;

std::unique_ptr<Tool> ToolWithoutPort(const Surroundings& with, Narrator& narrator) {
  static NoPort port;  // has no state
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

/// A VSK chip to whose files the name belongs; the first chip when there is none.
void ChooseModel(CommandLine& line) {
  if (!line.chip.empty()) return;
  const auto row = std::ranges::find_if(kVskModels, [&line](const VskModel& model) {
    return loadfile::IsShown(line.file, model.formats);
  });
  const auto chip = row == kVskModels.end() ? 0 : row - kVskModels.begin();
  line.model = static_cast<VskChip>(chip);
  line.chip = LowerCase(ModelOf(*line.model).name);
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
  outcome.files = {line.file};
  const auto facts = line.model ? VskJob(*tool, line, narrator, [] { return false; }).Load(outcome)
                                : RtdJob(*tool, line, narrator).Load(outcome);
  const std::string notes = NotesText(*facts);
  outcome.failure = line.strict && !notes.empty() ? kStrict : ReasonText(facts);
  if (!outcome.failure.empty()) {
    outcome.status = kBadFile;
    return outcome;
  }

  if (line.json) {
    Json object{{"command", "check"}, {"chip", line.chip}, {"files", outcome.files}};
    object["size"] = outcome.size.value_or(0);
    object["maximumAddress"] = facts->maximumAddress;
    object["checksum"] = facts->checksum;
    if (line.model) object["crc"] = facts->crc;
    if (!notes.empty()) object["notes"] = notes;
    object["result"] = "ok";
    object["exitStatus"] = kDone;
    Print(object, with.out);
    return outcome;
  }
  std::vector<std::pair<std::string, std::string>> rows;
  for (const std::string& file : outcome.files) rows.emplace_back("MCU File", file);
  rows.emplace_back("Bytes", std::to_string(outcome.size.value_or(0)));
  rows.emplace_back("MaxAddress", facts->maximumAddress);
  rows.emplace_back("CheckSum", facts->checksum);
  if (line.model) rows.emplace_back("S/W CRC", facts->crc);
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
  const auto inUse = static_cast<std::size_t>(boards.CurrentBoard);
  Json list = Json::array();
  for (std::size_t i = 0; i < std::max(boards.NamedRows(), inUse + 1); ++i) {
    const IspBoard& board = boards.BoardTable[i];
    list.push_back({{"number", i},
                    {"name", board.name},
                    {"inUse", i == inUse},
                    {"complete", board.Complete()}});
    if (line.json) continue;
    with.out << (i == inUse ? "* " : "  ") << std::setw(2) << i << "  " << board.name
             << (board.Complete() ? "" : "  (its row in the table is not complete)") << "\n";
  }
  if (line.json) Print({{"command", "boards"}, {"boards", std::move(list)}}, with.out);
  return kDone;
}

}  // namespace terminal
