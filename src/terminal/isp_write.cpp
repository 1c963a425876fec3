#include "terminal/isp_write.h"

#include <algorithm>

#include "terminal/chip_command.h"
#include "terminal/listings.h"

namespace terminal {
namespace {

std::string Refusal(const Outcome& outcome) {
  return outcome.begun || outcome.status > kSignalled ? ResultText(outcome) : outcome.failure;
}

/// The result of a command that was done or refused; of a list only a refusal.
int Tell(const Outcome& outcome, bool json, const Surroundings& with) {
  const bool isResult = outcome.Good() || outcome.status == kChipSaysNo;
  if (json) {
    with.out << ResultJson(outcome) << "\n" << std::flush;
  } else if (isResult) {
    with.out << ResultText(outcome) << "\n" << std::flush;
  }
  if (!isResult) with.err << "isp-write: " << Refusal(outcome) << "\n" << std::flush;
  return outcome.status;
}

int Do(const std::vector<std::string>& arguments, const Surroundings& with) {
  const ParsedLine parsed = ParseCommandLine(arguments, with.version);
  if (!parsed.help.empty()) {
    with.out << parsed.help;
    return kDone;
  }
  if (!parsed.line) {
    const bool json = std::ranges::find(arguments, "--json") != arguments.end();
    Tell({.status = kBadCommandLine, .failure = parsed.problem}, json, with);
    with.err << "Try: isp-write --help\n";
    return kBadCommandLine;
  }
  const CommandLine& line = *parsed.line;
  Narrator narrator(with.err, with.errIsTerminal, line.quiet, with.ticks);
  Outcome outcome;
  switch (line.command) {
    case Command::Check:
      outcome = ListCheck(line, with, narrator);
      return outcome.Good() ? kDone : Tell(outcome, line.json, with);
    case Command::Ports:
      return ListPorts(line, with, narrator);
    case Command::Boards:
      return ListBoards(line, with, narrator);
    default:
      outcome = ChipCommand(line, with, narrator).Execute();
      if (outcome.Good()) narrator.Finish();
      narrator.EndBar();
      return Tell(outcome, line.json, with);
  }
}

}  // namespace

int IspWrite(const std::vector<std::string>& arguments, const Surroundings& with) {
  const int status = Do(arguments, with);
  with.out.flush();
  if (with.out.good()) return status;
  with.err << "isp-write: the result cannot be written to the standard output\n";
  return status == kDone ? kBadFile : status;
}

}  // namespace terminal
