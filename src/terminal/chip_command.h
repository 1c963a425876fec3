// One command that works on a chip, from the checks before the first port access to the result.
#pragma once

#include <memory>
#include <string>

#include "bus/recording_port.h"
#include "platform/single_use.h"
#include "terminal/command_line.h"
#include "terminal/narrator.h"
#include "terminal/outcome.h"
#include "terminal/rtd_job.h"
#include "terminal/simulated_port.h"
#include "terminal/surroundings.h"
#include "terminal/vsk_job.h"
#include "tool/tool.h"

namespace terminal {

inline constexpr const char* kStrict = "--strict: the file is not as its maker meant";

/// What was told of files that are not as their maker meant; empty for nothing.
std::string NotesText(const loadfile::ImageFacts& facts);

class ChipCommand {
 public:
  ChipCommand(const CommandLine& line, const Surroundings& with, Narrator& narrator)
      : line_(line), with_(with), narrator_(narrator) {}

  /// Does it. Whatever can be refused is refused before the port is touched.
  Outcome Execute();

 private:
  /// Each is false when the command ends there; the outcome says why.
  bool CheckOutput();
  bool ChooseBoard();
  bool ReadCodes();
  bool OpenFlash();
  bool LoadImages();
  bool HoldThePort();

  bool Prepare();
  void OpenPort();
  void Work();
  void WriteOutput();
  bool Refuse(int status, const std::string& why);
  RunLine Unbegun() const;
  bool Interrupted() const { return with_.signal() != 0; }

  const CommandLine& line_;
  const Surroundings& with_;
  Narrator& narrator_;
  Outcome outcome_;
  std::string output_;  // what was read, as the file's content

  // In the order in which they are built: the tool releases the lines before the port is given
  // back.
  std::unique_ptr<SimulatedPort> simulated_;
  std::unique_ptr<SingleUse> alone_;
  std::string portProblem_;  // what the port could not do, told once
  std::unique_ptr<PortIo> port_;
  std::unique_ptr<RecordingPort> recording_;
  std::unique_ptr<Tool> tool_;
  std::unique_ptr<VskJob> vsk_;
  std::unique_ptr<RtdJob> rtd_;
};

}  // namespace terminal
