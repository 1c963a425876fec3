// One operator at one simulated board: a started program with its windows, on a random wiring.
#pragma once

#include <QColor>
#include <QString>
#include <memory>

#include "simulator/simulated_board.h"
#include "soak/crc_range.h"
#include "soak/dialog_robot.h"
#include "soak/random_faults.h"
#include "soak/tally.h"
#include "support/fake_ticks.h"
#include "support/temp_folder.h"
#include "tool/tool.h"
#include "ui/launcher.h"

/// Passes accesses on, and ends a run that makes more of them than any sound one can: writing both
/// banks of a chip takes under five million.
class BoundedPort final : public PortIo {
 public:
  explicit BoundedPort(PortIo& port) : port_(port) {}

  void BeginRun() { left_ = 20'000'000; }
  bool Exhausted() const { return left_ == 0; }

  void UsePort(const PortUse& use) override { port_.UsePort(use); }
  void DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) override {
    Count();
    port_.DlPortWritePortUchar(port, value);
  }
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t port) override {
    Count();
    return port_.DlPortReadPortUchar(port);
  }

 private:
  void Count();

  PortIo& port_;
  std::uint64_t left_ = 0;
};

class Session {
 public:
  Session(Random& random, DialogRobot& robot, Tally& tally);

  /// One thing that an operator, or the world around the board, does.
  void Step();

 private:
  // The launcher and the world.
  void OpenWriter();
  void ChangeBoard();
  void Settings();
  void EndFaults();
  void BeginRun();
  void EndRun();
  /// The window shows of the run that ended what was returned of it.
  void CompareShown(const QString& text, const QColor& colour);
  /// The place of the chip that is plugged in among those that can be; 0 when there is none.
  std::size_t Plugged() const;
  /// Whether the tool reaches the chip of this name, and nothing ails it.
  bool Sound(std::string_view chip) const;

  // The writer windows.
  void Load(const char* window, const char* button);
  void ProgramVsk();
  void OtherVskStep();
  void StepRtd();
  void RunRtd();

  void Click(const char* window, const char* button) const;
  /// Null when the operator's last step closed the window.
  const char* OpenWriterName() const;

  Random& random_;
  DialogRobot& robot_;
  Tally& tally_;

  const IspBoard wiring_;
  TempFolder folder_;
  FakeTicks ticks_{4};
  simulator::SimulatedBoard board_;
  CrcRange crcRange_;
  BoundedPort port_{board_.cable};
  RunLine ended_;  // of the run that went on last; empty when it sent nothing
  std::unique_ptr<Tool> tool_;
  std::unique_ptr<Main> launcher_;
};
