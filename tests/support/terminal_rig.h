// isp-write on a simulated board in place of the real port, with an installation of its own.
#pragma once

#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "simulator/bus_log.h"
#include "simulator/simulated_board.h"
#include "support/fake_ticks.h"
#include "support/temp_folder.h"
#include "terminal/isp_write.h"

/// Passes accesses on to another port, and keeps them.
class KeptAccesses final : public PortIo {
 public:
  explicit KeptAccesses(PortIo& port) : port_(port) {}

  using Access = std::pair<std::uint32_t, int>;  // port, and the byte written or -1 - the byte read
  std::vector<Access> all;
  std::function<void()> onAccess = [] {};

  void UsePort(const PortUse& use) override { port_.UsePort(use); }
  bool StillThere() override { return port_.StillThere(); }
  void DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) override {
    all.emplace_back(port, value);
    onAccess();
    port_.DlPortWritePortUchar(port, value);
  }
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t port) override {
    const auto value = port_.DlPortReadPortUchar(port);
    all.emplace_back(port, -1 - value.value_or(0));
    onAccess();
    return value;
  }

 private:
  PortIo& port_;
};

struct TerminalRig {
  TempFolder folder;
  FakeTicks ticks{4};
  simulator::SimulatedBoard board{simulator::CableWiring()};
  KeptAccesses accesses{board.cable};
  std::string portProblem;  // told when the port is opened; empty for none
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

  int Run(const std::vector<std::string>& arguments) {
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
  /// A port that lives as long as the command, on the board that outlives it.
  struct Borrowed final : PortIo {
    Borrowed(PortIo& lent, Problem told, std::string trouble)
        : port(lent), report(std::move(told)), problem(std::move(trouble)) {}
    PortIo& port;
    Problem report;
    std::string problem;

    void UsePort(const PortUse& use) override {
      if (!problem.empty()) report(problem);
      port.UsePort(use);
    }
    bool StillThere() override { return problem.empty(); }
    void DlPortWritePortUchar(std::uint32_t at, std::uint8_t value) override {
      if (problem.empty()) port.DlPortWritePortUchar(at, value);
    }
    std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t at) override {
      return problem.empty() ? port.DlPortReadPortUchar(at) : std::nullopt;
    }
  };
  std::unique_ptr<PortIo> Open(const Problem& report) {
    ++opened;
    return std::make_unique<Borrowed>(accesses, report, portProblem);
  }
};
