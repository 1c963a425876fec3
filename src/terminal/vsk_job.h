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

  /// Loads the image that the command needs; touches no port. False when the file was refused, or
  /// holds nothing that this chip could be programmed with: `Refusal` tells.
  bool Load(Outcome& outcome);
  /// Leaves ISP mode at the end, whatever happened.
  void Run(Outcome& outcome);

  const std::string& Refusal() const { return view_.refusal; }
  /// Of a file that was loaded and is not as its maker meant; empty for none.
  const std::string& Notes() const { return view_.notes; }
  ImageFacts Facts() const {
    return {view_.boxes.at(ImageBox::MaximumAddress), view_.boxes.at(ImageBox::Checksum),
            view_.boxes.at(ImageBox::SoftwareCrc)};
  }
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
  /// A file was: with the reason.
  bool Refused(Outcome& outcome) const;
  void Program(Outcome& outcome);
  void Erase(Outcome& outcome);
  void ReadAndCompare(Outcome& outcome);
  /// Reads into `cells_`.
  void ReadCells(AddressRange range, Outcome& outcome);
  void Log(const char* operation, Outcome& outcome);

  Tool& tool_;
  const CommandLine& line_;
  Narrator& narrator_;
  const std::function<bool()> stopAsked_;
  VskTerminalView view_;
  std::vector<std::uint8_t> cells_;
};

}  // namespace terminal
