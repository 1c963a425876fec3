#include "terminal/chip_command.h"

#include <algorithm>
#include <vector>

#include "image/hex_writer.h"
#include "platform/files.h"
#include "terminal/port_words.h"
#include "terminal/refusals.h"
#include "text/hex_text.h"
#include "vsk/entry_parameters.h"

namespace fs = std::filesystem;

namespace terminal {
namespace {

std::optional<std::int16_t> BoardNumber(const IspBoards& boards, const std::string& text) {
  const std::size_t rows = boards.NamedRows();
  if (const auto number = WholeDecimal(text)) {
    return *number < rows ? std::optional(static_cast<std::int16_t>(*number)) : std::nullopt;
  }
  std::vector<std::int16_t> begin;
  for (std::size_t row = 0; row < rows; ++row) {
    const std::string name = UpperCase(boards.BoardTable[row].name);
    if (name == UpperCase(text)) return static_cast<std::int16_t>(row);
    if (name.starts_with(UpperCase(text))) begin.push_back(static_cast<std::int16_t>(row));
  }
  return begin.size() == 1 ? std::optional(begin.front()) : std::nullopt;
}

std::string Unwritable(const std::string& file, const Status& status) {
  return file + ": it cannot be written (" + status.Reason() + ")";
}

bool IsHexName(const std::string& name) { return UpperCase(name).ends_with(".HEX"); }

}  // namespace

std::string NotesText(const loadfile::ImageFacts& facts) {
  std::string text;
  for (std::size_t i = 0; i < facts.wrongStartCodes; ++i) {
    text += std::string(kWrongStartCode) + "\n";
  }
  text += facts.notes;
  return text.substr(0, text.find_last_not_of('\n') + 1);
}

bool ChipCommand::Refuse(int status, const std::string& why) {
  outcome_.status = status;
  outcome_.failure = why;
  outcome_.place.clear();
  outcome_.difference.reset();
  return false;
}

Outcome ChipCommand::Execute() {
  outcome_.command = line_.name;
  outcome_.chip = line_.chip;
  outcome_.simulated = line_.simulated;
  for (const std::string& file : {line_.file, line_.secondFile}) {
    if (!file.empty()) outcome_.files.push_back(file);
  }
  if (!Prepare()) return outcome_;

  tool_->timing.SpeedFactor = line_.speed;
  tool_->timing.CalibrateSpeed();
  if (Interrupted()) {
    outcome_.note = "nothing was sent";
  } else {
    Work();
  }

  // The lines are released and the registers put back before anything is said to be done.
  vsk_.reset();
  rtd_.reset();
  tool_.reset();
  recording_.reset();
  port_.reset();
  if (!portProblem_.empty()) {
    Refuse(kNoPort, portProblem_);
    outcome_.begun = outcome_.duration.count() > 0;  // else it was never there
  }
  if (simulated_) {
    const Status saved = simulated_->SaveFlash();
    if (!saved.Ok() && outcome_.Good()) Refuse(kBadFile, Unwritable(line_.flash, saved));
  }
  if (Interrupted()) outcome_.status = kSignalled + with_.signal();
  if (outcome_.Good() && line_.command == Command::Read) WriteOutput();
  return outcome_;
}

bool ChipCommand::Prepare() {
  if (!CheckOutput()) return false;
  if (line_.simulated) {
    simulated_ = std::make_unique<SimulatedPort>(line_);
    const Status faults = simulated_->SwitchFaultsOn();
    if (!faults.Ok()) return Refuse(kBadCommandLine, faults.Reason());
  }
  OpenPort();
  return ChooseBoard() && ReadCodes() && LoadImages() && HoldThePort() && OpenFlash();
}

void ChipCommand::OpenPort() {
  Directories directories = with_.directories;
  const auto tell = [this](const std::string& message) { narrator_.Say(message); };
  if (simulated_) {
    directories.stateFolder = with_.simulatedStateFolder;
  } else {
    FillProgramFolder(directories, tell);
    port_ =
        with_.openPort(directories.programFolder / "Initial", [this](const std::string& message) {
          if (portProblem_.empty()) portProblem_ = InTerminalWords(message);
        });
  }
  PortIo& io = simulated_ ? simulated_->Io() : *port_;
  if (!with_.recording.empty()) {
    recording_ = std::make_unique<RecordingPort>(io, PathOf(with_.recording), tell);
  }
  tool_ = std::make_unique<Tool>(recording_ ? *recording_ : io, with_.ticks, directories, tell,
                                 "isp-write");
  if (recording_) recording_->FollowBoards(tool_->boards);
}

/// A file that could not be written would be told only when the chip has been read.
bool ChipCommand::CheckOutput() {
  if (line_.command != Command::Read) return true;
  const std::string name = UpperCase(line_.file);
  if (!name.ends_with(".HEX") && !name.ends_with(".BIN")) {
    return Refuse(kBadCommandLine, line_.file + ": the file's name must end in .hex or .bin");
  }
  const Status writable = CanReplace(PathOf(line_.file));
  return writable.Ok() || Refuse(kBadFile, Unwritable(line_.file, writable));
}

bool ChipCommand::ChooseBoard() {
  IspBoards& boards = tool_->boards;
  if (simulated_) {
    tool_->port.InitPortShadows();
  } else {
    tool_->LoadConfiguration([] {});
  }
  if (line_.port) tool_->port.PortBase = *line_.port;
  if (simulated_) {
    if (!line_.board.empty()) {
      return Refuse(kBadCommandLine, "--board: the simulated board has a cable of its own");
    }
    boards.CurrentBoard = 0;
    boards.BoardTable[0] = simulator::CableWiring();
  } else if (!line_.board.empty()) {
    const auto number = BoardNumber(boards, line_.board);
    if (!number) {
      return Refuse(kBadCommandLine, "--board " + line_.board +
                                         ": no board is called so, or more than one. \"isp-write "
                                         "boards\" lists them");
    }
    boards.CurrentBoard = *number;
  }
  outcome_.board = boards.InUse().name;
  outcome_.port = HexText(tool_->port.PortBase);
  return boards.InUse().Complete() || Refuse(kBadFile, boards.MissingWiring());
}

bool ChipCommand::ReadCodes() {
  if (!line_.model) return true;
  auto& params = tool_->frames.IspParams;
  const fs::path file = line_.codes.empty()
                            ? tool_->directories.programFolder / "Initial" / "security.cod"
                            : PathOf(line_.codes);
  if (simulated_ && line_.codes.empty()) {
    const simulator::VskIdentity identity;
    return fileop::TakeEntry(fileop::EntryContent(identity.address, identity.codes), params);
  }
  const auto content = ReadFile(file, params.size());
  if (content->empty()) {
    return Refuse(kBadFile, "no security codes: " + PathText(file) + " " +
                                (content.Ok() ? "is empty" : "(" + content.Reason() + ")") +
                                ". Enter them once in the window that isp-writer shows at its "
                                "first start, or name a file with --codes");
  }
  return fileop::TakeEntry(*content, params) ||
         Refuse(kBadFile, PathText(file) + ": it is no file of security codes");
}

bool ChipCommand::OpenFlash() {
  if (line_.flash.empty()) return true;
  const Status loaded = simulated_->LoadFlash();
  if (!loaded.Ok()) return Refuse(kBadFile, line_.flash + ": " + loaded.Reason());
  const Status writable = CanReplace(PathOf(line_.flash));
  return writable.Ok() || Refuse(kBadFile, Unwritable(line_.flash, writable));
}

bool ChipCommand::LoadImages() {
  if (line_.model) {
    vsk_ = std::make_unique<VskJob>(*tool_, line_, narrator_, [this] { return Interrupted(); });
  } else {
    rtd_ = std::make_unique<RtdJob>(*tool_, line_, narrator_);
  }
  const auto facts = vsk_ ? vsk_->Load(outcome_) : rtd_->Load(outcome_);
  if (!facts.Ok()) return Refuse(kBadFile, ReasonText(facts));
  return !line_.strict || NotesText(*facts).empty() || Refuse(kBadFile, kStrict);
}

bool ChipCommand::HoldThePort() {
  if (simulated_ && line_.flash.empty()) return true;
  std::error_code missing;
  const std::string flash = PathText(fs::weakly_canonical(PathOf(line_.flash), missing));
  const std::string what =
      simulated_ ? "flash-" + std::to_string(loadfile::ContentHash(flash)) : outcome_.port;
  alone_ = with_.holdAlone("isp-write-" + what);
  if (alone_) return true;
  return Refuse(simulated_ ? kBadFile : kNoPort,
                (simulated_ ? line_.flash : "port " + outcome_.port) +
                    " is in use by another isp-write: wait for its end, or end it");
}

/// Every run is logged, also one whose chip did not even enter ISP mode.
RunLine ChipCommand::Unbegun() const {
  RunLine line{.chip = UpperCase(line_.chip),
               .operation = vsk_ ? vsk_->Operation() : rtd_->Operation(),
               .result = {outcome_.failure, outcome_.failure}};
  for (const std::string& file : {line_.file, line_.secondFile}) {
    if (!file.empty()) line.images.push_back({.file = file});
  }
  if (!line.images.empty()) line.images.front().size = outcome_.size.value_or(0);
  return line;
}

void ChipCommand::Work() {
  outcome_.begun = true;
  RunReport& report = tool_->runReport;
  report.Ended = [this](RunLine& line) {
    std::string& failure = line.result.failure;
    if (failure.empty()) failure = vsk_ ? vsk_->Unsaid(line) : rtd_->Unsaid(line);
    tool_->runLog.Append(line);
  };
  if (vsk_) {
    vsk_->Run(outcome_);
  } else {
    rtd_->Run(outcome_);
  }
  if (report.Told() == 0 && portProblem_.empty() && outcome_.status == kChipSaysNo) {
    tool_->runLog.Append(Unbegun());
  }
  tool_->port.StillThere();  // one that has gone meanwhile is told
  if (line_.command != Command::Read) return;
  const auto& cells = vsk_->Cells();
  output_ = IsHexName(line_.file) ? loadfile::HexFileText(vsk_->Range().first, cells)
                                  : std::string(cells.begin(), cells.end());
}

void ChipCommand::WriteOutput() {
  const Status written = ReplaceFile(PathOf(line_.file), output_);
  if (!written.Ok()) Refuse(kBadFile, Unwritable(line_.file, written));
}

}  // namespace terminal
