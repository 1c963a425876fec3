// The faults that the operator can switch on, as controls.
#pragma once

#include <QCheckBox>
#include <QGroupBox>
#include <QSpinBox>
#include <functional>
#include <vector>

#include "simulator/simulated_board.h"

namespace simulator {

/// Frames are counted from the moment a fault is switched on, or its numbers are changed.
class FaultBox final : public QGroupBox {
 public:
  explicit FaultBox(SimulatedBoard& board);

  /// Offers what does something for the chip that is plugged in.
  void ShowChip();
  /// Follows faults that ended by themselves, or by a power cycle.
  void Refresh();

 private:
  QCheckBox* AddSwitch(QLayout* row, const char* name, const char* caption);
  QSpinBox* AddNumber(QLayout* row, QSpinBox* number, const char* caption, int least, int most);
  /// `apply` runs when the switch or one of its numbers has changed.
  void OnChange(QCheckBox* on, const std::vector<QSpinBox*>& numbers,
                const std::function<void()>& apply);

  void ApplyUnplugged();
  void ApplyRefused();
  void ApplyFlipped();

  SimulatedBoard& board_;
  QCheckBox* unplugged_;
  QSpinBox* moreFrames_;
  QCheckBox* busy_;
  QCheckBox* stuck_;
  QCheckBox* refused_;
  QSpinBox* byte_;
  QSpinBox* frame_;
  QCheckBox* flipped_;
  QSpinBox* bit_;
  QSpinBox* bank_;
  QSpinBox* address_;
};

}  // namespace simulator
