#include "simulator_window/fault_box.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "simulator_window/hex_spin_box.h"
#include "widgets/guarded.h"

namespace simulator {

FaultBox::FaultBox(SimulatedBoard& board) : QGroupBox(QStringLiteral("Faults")), board_(board) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(8, 4, 8, 4);
  const auto addRow = [rows] {
    auto* row = new QHBoxLayout;
    rows->addLayout(row);
    return row;
  };

  QHBoxLayout* row = addRow();
  unplugged_ = AddSwitch(row, "Unplugged", "Unplugged");
  moreFrames_ = AddNumber(row, new QSpinBox, "after so many more frames", 0, 1'000'000);
  row->addStretch();
  busy_ = AddSwitch(row, "BusyForEver", "Busy for ever");
  stuck_ = AddSwitch(row, "SdaStuckLow", "SDA stuck low");

  row = addRow();
  refused_ = AddSwitch(row, "ByteRefused", "Byte refused");
  byte_ = AddNumber(row, new QSpinBox, "byte (0 is the address)", 0, 257);
  frame_ = AddNumber(row, new QSpinBox, "of the next frame number", 1, 1'000'000);
  row->addStretch();

  row = addRow();
  flipped_ = AddSwitch(row, "BitFlipped", "Flash bit flipped");
  bit_ = AddNumber(row, new QSpinBox, "bit", 0, 7);
  bank_ = AddNumber(row, new QSpinBox, "of bank", 0, 1);
  address_ = AddNumber(row, new HexSpinBox, "address (hex)", 0, 0xFFFF);
  row->addStretch();

  OnChange(unplugged_, {moreFrames_}, [this] { ApplyUnplugged(); });
  OnChange(refused_, {byte_, frame_}, [this] { ApplyRefused(); });
  OnChange(flipped_, {bit_, bank_, address_}, [this] { ApplyFlipped(); });
  OnChange(busy_, {}, [this] { board_.faults.busyForEver = busy_->isChecked(); });
  OnChange(stuck_, {}, [this] { board_.faults.sdaStuckLow = stuck_->isChecked(); });
}

QCheckBox* FaultBox::AddSwitch(QLayout* row, const char* name, const char* caption) {
  auto* on = new QCheckBox(QLatin1String(caption));
  on->setObjectName(QLatin1String(name));
  row->addWidget(on);
  return on;
}

QSpinBox* FaultBox::AddNumber(QLayout* row, QSpinBox* number, const char* caption, int least,
                              int most) {
  number->setRange(least, most);
  number->setLocale(QLocale::c());  // the digits 0 to 9, as everywhere in the windows
  number->setObjectName(QLatin1String(caption));
  number->setAccessibleName(QLatin1String(caption));
  row->addWidget(new QLabel(QLatin1String(caption)));
  row->addWidget(number);
  return number;
}

void FaultBox::OnChange(QCheckBox* on, const std::vector<QSpinBox*>& numbers,
                        const std::function<void()>& apply) {
  const auto changed = Guarded(this, apply);
  connect(on, &QCheckBox::toggled, this, changed);
  for (QSpinBox* number : numbers) connect(number, &QSpinBox::valueChanged, this, changed);
}

void FaultBox::ShowChip() {
  const SimulatedChip* chip = board_.Chip();
  const bool plugged = chip != nullptr;
  for (QWidget* control : std::initializer_list<QWidget*>{
           unplugged_, moreFrames_, busy_, refused_, byte_, frame_, flipped_, bit_, address_}) {
    control->setEnabled(plugged);
  }
  bank_->setEnabled(plugged && chip->Banks() > 1);
  if (!plugged) return;
  bank_->setRange(chip->FirstBankNumber(), chip->FirstBankNumber() + chip->Banks() - 1);
  address_->setMaximum(static_cast<int>(chip->Bank(0).Cells().size()) - 1);
  ApplyFlipped();  // the same number is another bank of another chip
}

void FaultBox::Refresh() {
  const auto& refusal = board_.faults.refusedByte;
  if (refusal && board_.wire.FramesSeen() >= refusal->frame) refused_->setChecked(false);
  busy_->setChecked(board_.faults.busyForEver);
  stuck_->setChecked(board_.faults.sdaStuckLow);
}

void FaultBox::ApplyUnplugged() {
  if (!unplugged_->isChecked()) {
    board_.faults.unpluggedAfterFrame = Faults::kNever;
    return;
  }
  const auto more = static_cast<std::uint64_t>(moreFrames_->value());
  if (more == 0 && board_.Chip() != nullptr) board_.Chip()->OnUnplugged();
  board_.faults.unpluggedAfterFrame = more == 0 ? 0 : board_.wire.FramesSeen() + more;
}

void FaultBox::ApplyRefused() {
  board_.faults.refusedByte.reset();
  if (!refused_->isChecked()) return;
  board_.faults.refusedByte = {
      board_.wire.FramesSeen() + static_cast<std::uint64_t>(frame_->value()),
      static_cast<std::size_t>(byte_->value())};
}

void FaultBox::ApplyFlipped() {
  board_.faults.flippedBit.reset();
  const SimulatedChip* chip = board_.Chip();
  if (!flipped_->isChecked() || chip == nullptr) return;
  board_.faults.flippedBit = {bank_->value() - chip->FirstBankNumber(),
                              static_cast<std::uint32_t>(address_->value()), bit_->value()};
}

}  // namespace simulator
