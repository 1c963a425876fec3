// The "Simulated board" window: what is plugged into the simulated cable, and what it went through.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QWidget>
#include <fstream>
#include <memory>
#include <optional>
#include <vector>

#include "simulator/bus_log.h"
#include "simulator/simulated_board.h"

namespace simulator {

/// Shows the board as it is now, four times a second, and lets the operator plug chips and switch
/// faults.
class BoardWindow final : public QWidget {
 public:
  explicit BoardWindow(SimulatedBoard& board);
  ~BoardWindow() override;

  /// Brings the window up to date with the board.
  void Refresh();

 private:
  struct FlashTab {
    const Flash* flash;
    QPlainTextEdit* view;
    std::optional<std::uint64_t> shownVersion;
  };

  QWidget* CreateState();
  QWidget* CreateRecording();
  void ShowChip();
  void ToggleRecording(bool on);

  SimulatedBoard& board_;
  FrameCounters counters_;
  std::ofstream recording_;
  std::unique_ptr<VcdRecorder> recorder_;

  QComboBox* chip_ = nullptr;
  QLabel* identity_ = nullptr;
  QLabel* ispMode_ = nullptr;
  QLabel* traffic_ = nullptr;
  QPushButton* record_ = nullptr;
  QTabWidget* flashes_ = nullptr;
  std::vector<FlashTab> flashTabs_;
  QTimer refresh_;
};

}  // namespace simulator
