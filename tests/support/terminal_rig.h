// isp-write on a simulated board in place of the real port, with an installation of its own.
#pragma once

#include <functional>
#include <iomanip>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "simulator/simulated_board.h"
#include "support/fake_ticks.h"
#include "support/temp_folder.h"
#include "terminal/isp_write.h"

struct TerminalRig {
  /// The board's cable, which outlives the port. Keeps the accesses.
  struct Port final : PortIo {
    explicit Port(TerminalRig& owner, Problem told = {}) : rig(owner), report(std::move(told)) {}
    TerminalRig& rig;
    Problem report;

    void UsePort(const PortUse& use) override {
      if (!StillThere()) report(rig.portProblem);
      rig.board.cable.UsePort(use);
    }
    bool StillThere() override { return rig.portProblem.empty(); }
    void DlPortWritePortUchar(std::uint32_t at, std::uint8_t value) override {
      if (!StillThere()) return;
      Keep(at, value);
      rig.board.cable.DlPortWritePortUchar(at, value);
    }
    std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t at) override {
      if (!StillThere()) return std::nullopt;
      const auto value = rig.board.cable.DlPortReadPortUchar(at);
      Keep(at, -1 - value.value_or(0));
      return value;
    }
    void Keep(std::uint32_t at, int value) const {
      rig.accesses.emplace_back(at, value);
      rig.onAccess();
    }
  };

  TempFolder folder;
  FakeTicks ticks{4};
  simulator::SimulatedBoard board{simulator::CableWiring()};
  std::vector<std::pair<std::uint32_t, int>> accesses;  // port, byte written or -1 - byte read
  std::function<void()> onAccess = [] {};
  std::string portProblem;  // told when the port is used; empty for none
  int signal = 0;
  bool errIsTerminal = false;
  int opened = 0;
  std::string heldByOthers;              // what another copy uses
  std::function<void()> loaded = [] {};  // called between the load and the first access

  // Of the last run.
  std::string out, err;

  TerminalRig() {
    const auto initial = std::filesystem::path(SOURCE_FOLDER) / "src/simulator/Initial";
    std::filesystem::create_directories(folder / "program");
    std::filesystem::copy(initial, folder / "program/Initial");
  }

  std::string Sample(const std::string& name) const { return SOURCE_FOLDER "/samples/" + name; }

  /// The arguments with blanks between them, and in quotes when they are empty or have blanks.
  int Run(const std::string& line) {
    std::istringstream words(line);
    std::vector<std::string> arguments;
    for (std::string word; words >> std::quoted(word);) arguments.push_back(word);
    std::ostringstream outStream, errStream;
    const int status = terminal::IspWrite(
        arguments, {.out = outStream,
                    .err = errStream,
                    .errIsTerminal = errIsTerminal,
                    .ticks = ticks,
                    .directories = {.programFolder = folder / "program",
                                    .settingsFolder = folder / "config",
                                    .stateFolder = folder / "state"},
                    .simulatedStateFolder = folder / "simulated",
                    .openPort = [this](const auto&, const Problem& report) { return Open(report); },
                    .holdAlone = [this](const auto& what) { return Hold(what); },
                    .signal = [this] { return signal; },
                    .version = "isp-write 0"});
    out = outStream.str();
    err = errStream.str();
    return status;
  }

 private:
  std::unique_ptr<SingleUse> Hold(const std::string& what) const {
    loaded();
    return what == heldByOthers ? nullptr : std::make_unique<SingleUse>();
  }
  std::unique_ptr<PortIo> Open(const Problem& report) {
    ++opened;
    return std::make_unique<Port>(*this, report);
  }
};
