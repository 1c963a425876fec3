// What a command does with a VSK chip: the writer's own operations in the windows' order, and
// reading whole ranges of the flash.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "terminal/command_line.h"
#include "terminal/narrator.h"
#include "terminal/outcome.h"
#include "terminal/terminal_view.h"
#include "tool/tool.h"

namespace terminal {

class VskJob {
 public:
  /// `stopAsked`: a signal came. What changes the chip goes on to its end then; reading ends at the
  /// next page.
  VskJob(Tool& tool, const CommandLine& line, Narrator& narrator, std::function<bool()> stopAsked);

  /// Loads the image that the command needs; touches no port. Fails when the file was refused, or
  /// holds nothing that this chip could be programmed with.
  Result<loadfile::ImageFacts> Load(Outcome& outcome);
  /// Leaves ISP mode at the end, whatever happened.
  void Run(Outcome& outcome);

  /// What failed in a run although no text says so; empty for nothing.
  std::string Unsaid(const RunLine& run) const;
  /// The operation, as the log calls it.
  const char* Operation() const;
  /// What `Run` has read, for the command "read".
  const std::vector<std::uint8_t>& Cells() const { return cells_; }
  /// Where it began.
  AddressRange Range() const;

 private:
  /// The bank that the page-select frame reaches: it names none.
  std::span<const std::uint8_t> ReadableImage() const;
  bool HasUnreadableBanks() const { return tool_.isp.Model().banks.size() > 1; }
  bool Enter(Outcome& outcome);
  void Leave(Outcome& outcome);
  void Program(Outcome& outcome);
  void Erase(Outcome& outcome);
  void ReadAndCompare(Outcome& outcome);
  /// Reads into `cells_`.
  void ReadCells(AddressRange range, Outcome& outcome);
  void Log(Outcome& outcome);

  Tool& tool_;
  const CommandLine& line_;
  Narrator& narrator_;
  const std::function<bool()> stopAsked_;
  VskTerminalView view_;
  std::vector<std::uint8_t> cells_;
};

}  // namespace terminal
