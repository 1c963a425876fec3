#include "terminal/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "text/hex_text.h"

namespace terminal {
namespace {

constexpr const char* kPurpose =
    "writes firmware into VSK830, VSK630 and RTD2120 microcontrollers through the parallel port";
constexpr const char* kFooter =
    "\nCHIP is vsk830, vsk630 or rtd2120. A file of two banks of a vsk630 is named by its first "
    "file\n(.H00 or .B00); the second one has the same name ending in 1.\n\n"
    "Exit status: 0 done and verified, 1 the chip says no, 2 command line, 3 a file, 4 the port,\n"
    "128 + signal when a signal ended it. The manual page has more: man isp-write";
constexpr const char* kRtd2120 = "rtd2120";
constexpr std::int32_t kLastErasable = 0x7FFF;

std::optional<std::int32_t> Address(const std::string& text) {
  const bool prefixed = text.starts_with("0x") || text.starts_with("0X");
  const auto number = WholeHex(std::string_view(text).substr(prefixed ? 2 : 0));
  if (!number || *number > 0xFFFF) return std::nullopt;
  return static_cast<std::int32_t>(*number);
}

/// What the parser library cannot know of the arguments; throws its errors.
class Checks {
 public:
  explicit Checks(CommandLine& line) : line_(line) {}

  void Chip() {
    if (line_.chip.empty() || (line_.chip = LowerCase(line_.chip)) == kRtd2120) return;
    for (std::size_t row = 0; row < kVskModels.size(); ++row) {
      if (LowerCase(kVskModels[row].name) == line_.chip) line_.model = static_cast<VskChip>(row);
    }
    if (!line_.model) Refuse("unknown chip " + line_.chip + ": it is " + Chips());
  }

  void Port(const std::string& text) {
    if (text.empty()) return;
    line_.port = Address(text);
    if (line_.port.value_or(0) == 0) {
      Refuse("--port " + text + ": an address is a hexadecimal number from 1 to FFFF");
    }
  }

  void Pages(const std::string& text) {
    if (text.empty()) return;
    const std::size_t dash = text.find('-');
    const auto first = Address(text.substr(0, dash));
    const auto last = dash == std::string::npos ? first : Address(text.substr(dash + 1));
    if (!first || !last || *first > *last) {
      Refuse("--pages " + text + ": it takes two hexadecimal addresses, such as 0000-7FFF");
    }
    if (line_.command == Command::Erase && *last > kLastErasable) {
      Refuse("--pages " + text + ": only addresses 0000-7FFF can be page erased");
    }
    line_.pages = AddressRange{*first, *last};
  }

  /// An RTD2120 has no pages to erase, and nothing of it can be read.
  void WhatTheChipCanDo() {
    const bool rtd = line_.chip == kRtd2120;
    const bool reads = line_.command == Command::Read || line_.command == Command::Compare;
    if (rtd && reads) {
      Refuse(
          "an rtd2120 cannot be read: what was programmed is verified by the CRC-8 that the "
          "chip computes, as a part of \"program\"");
    }
    if (rtd && line_.pages) Refuse("an rtd2120 is erased as a whole, without --pages");
    if (!rtd && !line_.secondFile.empty()) Refuse("--second is for the second bank of an rtd2120");
    if (line_.command != Command::Program || !(line_.file + line_.secondFile).empty()) return;
    Refuse("program needs a file");
  }

  void Simulation() const {
    if (line_.simulated || (line_.faults.empty() && line_.flash.empty())) return;
    Refuse("--fault and --flash are for --simulated");
  }

 private:
  static std::string Chips() {
    std::string names;
    for (const VskModel& model : kVskModels) names += LowerCase(model.name) + ", ";
    return names + "or " + kRtd2120;
  }
  [[noreturn]] static void Refuse(const std::string& why) { throw CLI::ValidationError(why); }

  CommandLine& line_;
};

/// The options as the library reads them, before they are checked.
struct Reader {
  CommandLine line;
  std::string port, pages;
  bool noCompare = false;
  CLI::App app{std::string("isp-write ") + kPurpose};

  explicit Reader(const std::string& version) {
    app.name("isp-write");
    app.set_version_flag("--version", version);
    app.require_subcommand(1);
    app.allow_windows_style_options(false);  // a file's name may begin with "/" there too
    app.footer(kFooter);
    AddCommands();
    AddOptions();
    RefuseEmptyTexts(app);
    for (CLI::App* command : app.get_subcommands({})) RefuseEmptyTexts(*command);
  }

  /// An empty text is a script's variable that was not set, and never means "all" or "the usual".
  static void RefuseEmptyTexts(CLI::App& of) {
    const CLI::Validator given(
        [](const std::string& text) { return std::string(text.empty() ? "it is empty" : ""); }, "");
    for (CLI::Option* option : of.get_options()) {
      if (option->get_items_expected_max() > 0) option->check(given);
    }
  }

  CLI::App* Add(Command command, const char* name, const char* purpose) {
    CLI::App* added = app.add_subcommand(name, purpose);
    added->fallthrough();  // the general options stand behind a command too
    added->footer("\nGeneral options: isp-write --help");
    added->callback([this, command, name] {
      line.command = command;
      line.name = name;
    });
    return added;
  }

  void AddCommands() {
    CLI::App* program =
        Add(Command::Program, "program", "erase, program, compare the CRCs, read back and compare");
    program->add_option("CHIP", line.chip, "the chip")->required()->option_text(" ");
    program->add_option("FILE", line.file, "the image; of a vsk630 the file of bank 0");
    program->add_option("--second", line.secondFile, "the image of an rtd2120's second bank")
        ->type_name("FILE");
    program->add_flag("--no-compare", noCompare, "leave out the reading back");

    CLI::App* erase = Add(Command::Erase, "erase", "erase the flash, or some pages of it");
    erase->add_option("CHIP", line.chip, "the chip")->required()->option_text(" ");
    AddPages(erase, "only the 128-byte pages that hold these addresses, 0000-7FFF at most");

    CLI::App* read = Add(Command::Read, "read", "read the flash into a file");
    read->add_option("CHIP", line.chip, "the chip")->required()->option_text(" ");
    read->add_option("FILE", line.file, "OUT.hex or OUT.bin")->required()->option_text(" ");
    AddPages(read, "only these addresses, for instance 0000-0FFF");

    CLI::App* compare = Add(Command::Compare, "compare", "read back and compare; writes nothing");
    compare->add_option("CHIP", line.chip, "the chip")->required()->option_text(" ");
    compare->add_option("FILE", line.file, "the image")->required()->option_text(" ");

    CLI::App* check = Add(Command::Check, "check", "show what loading a file shows; uses no port");
    check->add_option("FILE", line.file, "the image")->required()->option_text(" ");
    check->add_option("CHIP", line.chip, "the chip, else by the name's ending vsk630 or vsk830")
        ->option_text(" ");

    Add(Command::Ports, "ports", "list the PC's ports, and how each would be reached");
    Add(Command::Boards, "boards", "list the board table");
  }

  void AddPages(CLI::App* command, const char* meaning) {
    command->add_option("--pages", pages, meaning)->type_name("FIRST-LAST");
  }

  void AddOptions() {
    app.add_option("--port", port, "address of the port, else the one that the windows use")
        ->type_name("HEX");
    app.add_option("--board", line.board, "the ISP board, else the one in use")
        ->type_name("NUMBER|NAME");
    app.add_option("--speed", line.speed, "delay of the bus, larger is slower; 2 when not given")
        ->check(CLI::Range(1, 10))
        ->option_text("1..10");
    app.add_option("--codes", line.codes, "security codes, else the installed security.cod")
        ->type_name("FILE");
    app.add_flag("--simulated", line.simulated, "a simulated board in place of the port");
    app.add_option("--fault", line.faults, "a fault of the simulated board; see the manual page")
        ->allow_extra_args(false)
        ->option_text("NAME");
    app.add_option("--flash", line.flash, "keeps the simulated chip's flash between calls")
        ->type_name("FILE");
    app.add_flag("--json", line.json, "print the result as one JSON object");
    app.add_flag("--quiet", line.quiet, "tell no progress");
    app.add_flag("--strict", line.strict, "refuse a file that is not as its maker meant");
  }

  void Check() {
    Checks checks(line);
    line.compare = !noCompare;
    checks.Chip();
    checks.Port(port);
    checks.Pages(pages);
    checks.WhatTheChipCanDo();
    checks.Simulation();
  }
};

}  // namespace

ParsedLine ParseCommandLine(const std::vector<std::string>& arguments, const std::string& version) {
  Reader reader(version);
  std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());  // as the library asks
  try {
    reader.app.parse(reversed);
    reader.Check();
  } catch (const CLI::CallForHelp&) {
    return {.help = reader.app.help()};
  } catch (const CLI::CallForVersion& asked) {
    return {.help = std::string(asked.what()) + "\n"};
  } catch (const CLI::Error& error) {
    const auto unknown = reader.app.remaining();
    if (!reader.app.get_subcommands().empty()) return {.problem = error.what()};
    return {.problem = unknown.empty() ? "a command is missing" : "unknown: " + unknown.front()};
  }
  return {.line = reader.line};
}

}  // namespace terminal
