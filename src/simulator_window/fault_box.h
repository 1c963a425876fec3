// The faults that the operator can switch on, as controls.
#pragma once

#include <QCheckBox>
#include <QGroupBox>
#include <QSpinBox>

#include "simulator/simulated_board.h"

namespace simulator {

/// Frames are counted from the moment a fault is switched on.
class FaultBox final : public QGroupBox {
 public:
  explicit FaultBox(SimulatedBoard& board);

 private:
  QSpinBox* AddNumber(QLayout* row, const char* caption, int least, int most);
  QLayout* UnplugRow();
  QLayout* RefuseRow();
  QLayout* FlipRow();
  QLayout* SwitchRow();

  SimulatedBoard& board_;
};

}  // namespace simulator
