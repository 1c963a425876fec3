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

  /// Loads the images that the command needs; touches no port. False when a file was refused, or
  /// holds nothing that the chip could be programmed with: `Refusal` tells.
  bool Load(Outcome& outcome);
  /// Leaves ISP mode at the end, whatever happened.
  void Run(Outcome& outcome);

  const std::string& Refusal() const { return view_.refusal; }
  /// Of a file that was loaded and is not as its maker meant; empty for none.
  const std::string& Notes() const { return view_.notes; }
  const std::vector<ImageFacts>& Facts() const { return view_.banks; }

 private:
  bool Load(const std::string& file, tongxun2120::Bank bank, Outcome& outcome);

  Tool& tool_;
  const CommandLine& line_;
  Narrator& narrator_;
  RtdTerminalView view_;
};

}  // namespace terminal
