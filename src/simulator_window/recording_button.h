// The button that records the simulated bus to a file, and tells while it does.
#pragma once

#include <QPushButton>
#include <fstream>
#include <memory>

#include "simulator/bus_log.h"
#include "simulator/simulated_board.h"

namespace simulator {

/// Looks on while it records. A checkable button would do nothing for a screen reader, which sets
/// its state and does not click.
class RecordingButton final : public QPushButton {
 public:
  explicit RecordingButton(SimulatedBoard& board);
  ~RecordingButton() override;

  /// Brings the file up to date. A file that cannot be written ends the recording, and is told.
  void Flush();

 protected:
  void initStyleOption(QStyleOptionButton* option) const override;

 private:
  void Toggle();
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
