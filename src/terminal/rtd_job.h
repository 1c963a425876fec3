// What a command does with an RTD2120: the writer's own run in the windows' order.
#pragma once

#include "terminal/command_line.h"
#include "terminal/narrator.h"
#include "terminal/outcome.h"
#include "terminal/terminal_view.h"
#include "tool/tool.h"

namespace terminal {

class RtdJob {
 public:
  RtdJob(Tool& tool, const CommandLine& line, Narrator& narrator)
      : tool_(tool), line_(line), narrator_(narrator), view_(narrator) {}

  /// Loads the images that the command needs; touches no port. Fails when a file was refused, or
  /// holds nothing that the chip could be programmed with. The facts of the first file, with the
  /// notes of both.
  Result<loadfile::ImageFacts> Load(Outcome& outcome);
  /// Leaves ISP mode at the end, whatever happened.
  void Run(Outcome& outcome);

  /// What failed in a run although no text says so; empty for nothing.
  std::string Unsaid(const RunLine& run);
  /// The operation, as the log calls it.
  const char* Operation() const { return line_.command == Command::Erase ? "Erase" : "Auto"; }

 private:
  Result<loadfile::ImageFacts> Load(const std::string& file, tongxun2120::Bank bank,
                                    Outcome& outcome);

  Tool& tool_;
  const CommandLine& line_;
  Narrator& narrator_;
  RtdTerminalView view_;
};

}  // namespace terminal
