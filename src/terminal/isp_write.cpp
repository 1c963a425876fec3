#include "terminal/isp_write.h"

#include "terminal/chip_command.h"
#include "terminal/listings.h"

namespace terminal {
namespace {

std::string Refusal(const Outcome& outcome) {
  return outcome.status > kSignalled ? ResultText(outcome) : outcome.failure;
}

int RunOnChip(const CommandLine& line, const Surroundings& with, Narrator& narrator) {
  const Outcome outcome = ChipCommand(line, with, narrator).Execute();
  const bool isResult = outcome.Good() || outcome.status == kChipSaysNo;
  if (line.json) {
    with.out << ResultJson(outcome) << "\n" << std::flush;
  } else if (isResult) {
    with.out << ResultText(outcome) << "\n" << std::flush;
  }
  if (!isResult) narrator.Say("isp-write: " + Refusal(outcome));
  return outcome.status;
}

int Do(const std::vector<std::string>& arguments, const Surroundings& with) {
  const ParsedLine parsed = ParseCommandLine(arguments, with.version);
  if (!parsed.help.empty()) {
    with.out << parsed.help;
    return kDone;
  }
  if (!parsed.line) {
    with.err << "isp-write: " << parsed.problem << "\nTry: isp-write --help\n";
    return kBadCommandLine;
  }
  const CommandLine& line = *parsed.line;
  Narrator narrator(with.err, with.errIsTerminal, line.quiet, with.ticks);
  switch (line.command) {
    case Command::Check:
      return ListCheck(line, with, narrator);
    case Command::Ports:
      return ListPorts(line, with, narrator);
    case Command::Boards:
      return ListBoards(line, with, narrator);
    default:
      return RunOnChip(line, with, narrator);
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
