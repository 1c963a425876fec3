#include "simulator_window/fault_box.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "widgets/controls.h"

namespace simulator {

FaultBox::FaultBox(SimulatedBoard& board) : QGroupBox(QStringLiteral("Faults")), board_(board) {
  auto* rows = new QVBoxLayout(this);
  for (QLayout* row : {UnplugRow(), RefuseRow(), FlipRow(), SwitchRow()}) rows->addLayout(row);
}

QSpinBox* FaultBox::AddNumber(QLayout* row, const char* caption, int least, int most) {
  auto* number = new QSpinBox;
  number->setRange(least, most);
  number->setAccessibleName(QLatin1String(caption));
  row->addWidget(new QLabel(QLatin1String(caption)));
  row->addWidget(number);
  return number;
}

QLayout* FaultBox::UnplugRow() {
  auto* row = new QHBoxLayout;
  auto* on = new QCheckBox(QStringLiteral("Unplugged"));
  on->setObjectName(QStringLiteral("Unplugged"));
  row->addWidget(on);
  QSpinBox* frames = AddNumber(row, "after so many more frames", 0, 1'000'000);
  row->addStretch();
  connect(on, &QCheckBox::toggled, this, Guarded(this, [this, on, frames] {
            const bool yes = on->isChecked();
            const auto more = static_cast<std::uint64_t>(frames->value());
            if (yes && more == 0 && board_.Chip() != nullptr) board_.Chip()->OnUnplugged();
            const std::uint64_t last = more == 0 ? 0 : board_.wire.FramesSeen() + more;
            board_.faults.unpluggedAfterFrame = yes ? last : Faults::kNever;
          }));
  return row;
}

QLayout* FaultBox::RefuseRow() {
  auto* row = new QHBoxLayout;
  auto* on = new QCheckBox(QStringLiteral("Byte refused"));
  on->setObjectName(QStringLiteral("ByteRefused"));
  row->addWidget(on);
  QSpinBox* byte = AddNumber(row, "byte (0 is the address)", 0, 257);
  QSpinBox* frame = AddNumber(row, "of the next frame number", 1, 1'000'000);
  row->addStretch();
  connect(on, &QCheckBox::toggled, this, Guarded(this, [this, on, byte, frame] {
            board_.faults.refusedByte.reset();
            if (!on->isChecked()) return;
            board_.faults.refusedByte = {
                board_.wire.FramesSeen() + static_cast<std::uint64_t>(frame->value()),
                static_cast<std::size_t>(byte->value())};
          }));
  return row;
}

QLayout* FaultBox::FlipRow() {
  auto* row = new QHBoxLayout;
  auto* on = new QCheckBox(QStringLiteral("Flash bit flipped"));
  on->setObjectName(QStringLiteral("BitFlipped"));
  row->addWidget(on);
  QSpinBox* bit = AddNumber(row, "bit", 0, 7);
  QSpinBox* bank = AddNumber(row, "of bank", 0, 1);
  QSpinBox* address = AddNumber(row, "address (hex)", 0, 0xFFFF);
  address->setDisplayIntegerBase(16);
  row->addStretch();
  connect(on, &QCheckBox::toggled, this, Guarded(this, [this, on, bit, bank, address] {
            board_.faults.flippedBit.reset();
            if (!on->isChecked()) return;
            board_.faults.flippedBit = {bank->value(), static_cast<std::uint32_t>(address->value()),
                                        bit->value()};
          }));
  return row;
}

QLayout* FaultBox::SwitchRow() {
  auto* row = new QHBoxLayout;
  auto* busy = new QCheckBox(QStringLiteral("Busy for ever"));
  busy->setObjectName(QStringLiteral("BusyForEver"));
  auto* stuck = new QCheckBox(QStringLiteral("SDA stuck low"));
  stuck->setObjectName(QStringLiteral("SdaStuckLow"));
  row->addWidget(busy);
  row->addWidget(stuck);
  row->addStretch();
  connect(busy, &QCheckBox::toggled, this,
          Guarded(this, [this, busy] { board_.faults.busyForEver = busy->isChecked(); }));
  connect(stuck, &QCheckBox::toggled, this,
          Guarded(this, [this, stuck] { board_.faults.sdaStuckLow = stuck->isChecked(); }));
  return row;
}

}  // namespace simulator
