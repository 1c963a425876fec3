// The "Simulated board" window: what is plugged into the simulated cable, and what it went through.
#pragma once

#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QWidget>
#include <vector>

#include "simulator/bus_log.h"
#include "simulator/simulated_board.h"
#include "simulator_window/fault_box.h"
#include "simulator_window/flash_view.h"
#include "simulator_window/recording_button.h"

namespace simulator {

/// What stays of a closed window: a button that opens it again. It cannot be closed itself.
class ReopenButton final : public QPushButton {
 public:
  explicit ReopenButton(QWidget& window);

 protected:
  void closeEvent(QCloseEvent* event) override { event->ignore(); }
};

/// Shows the board as it is now, four times a second, and lets the operator plug chips and switch
/// faults.
class BoardWindow final : public QWidget {
 public:
  explicit BoardWindow(SimulatedBoard& board);
  ~BoardWindow() override;

  /// Opens wholly inside the screen, to the right of `launcher`, without taking the focus. On a
  /// narrow screen the launcher makes room, and on a small one this window scrolls.
  void ShowBeside(QWidget& launcher);

  /// Brings the window up to date with the board.
  void Refresh();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* CreateState();
  QLayout* CreateChipRow();
  void ShowChip();

  SimulatedBoard& board_;
  FrameCounters counters_;
  ReopenButton reopen_{*this};

  QComboBox* chip_ = nullptr;
  QPushButton* powerCycle_ = nullptr;
  QLabel* identity_ = nullptr;
  QLabel* ispMode_ = nullptr;
  QLabel* traffic_ = nullptr;
  QTabWidget* flashes_ = nullptr;
  std::vector<FlashView*> flashViews_;
  FaultBox* faults_ = nullptr;
  RecordingButton* record_ = nullptr;
  QTimer refresh_;
};

}  // namespace simulator
