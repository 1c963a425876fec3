// The button that records the simulated bus to a file, and tells while it does.
#pragma once

#include <QPushButton>
#include <fstream>
#include <memory>

#include "simulator/bus_log.h"
#include "simulator/simulated_board.h"

namespace simulator {

class RecordingButton final : public QPushButton {
 public:
  explicit RecordingButton(SimulatedBoard& board);
  ~RecordingButton() override;

  /// Brings the file up to date. A file that cannot be written ends the recording, and is told.
  void Flush();

 private:
  void Toggle(bool on);
  void Begin(const QString& name);
  /// Tells when the recording could not be written.
  void End();
  void ShowState();

  SimulatedBoard& board_;
  QString name_;
  std::ofstream file_;
  std::unique_ptr<VcdRecorder> recorder_;  // null: not recording
};

}  // namespace simulator
