#include "simulator_window/board_window.h"

#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>

#include "platform/files.h"
#include "simulator_window/fault_box.h"
#include "text/hex_text.h"
#include "widgets/controls.h"

namespace simulator {
namespace {

constexpr int kRefresh_ms = 250;

/// 16 bytes a line behind their address.
QString FlashText(const Flash& flash) {
  std::string text;
  for (std::size_t i = 0; i < Flash::kBytes; ++i) {
    if (i % 16 == 0) {
      text += (i == 0 ? "" : "\n") + fileop::HexByte(static_cast<int>(i >> 8)) +
              fileop::HexByte(static_cast<int>(i & 0xFF)) + ' ';
    }
    text += ' ' + fileop::HexByte(flash.Cells()[i]);
  }
  return QString::fromStdString(text);
}

QLabel* NamedLabel(const char* name) {
  auto* label = new QLabel;
  label->setObjectName(QLatin1String(name));
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

}  // namespace

BoardWindow::BoardWindow(SimulatedBoard& board) : board_(board) {
  setObjectName(QStringLiteral("SimulatedBoard"));
  setWindowTitle(QStringLiteral("Simulated board"));
  auto* columns = new QVBoxLayout(this);
  columns->addWidget(CreateState());
  flashes_ = new QTabWidget;
  flashes_->setObjectName(QStringLiteral("Flash"));
  columns->addWidget(flashes_, 1);
  columns->addWidget(new FaultBox(board_));
  columns->addWidget(CreateRecording());
  resize(480, 560);

  board_.wire.ListenTo(&counters_);
  ShowChip();
  connect(&refresh_, &QTimer::timeout, this, Guarded(this, [this] { Refresh(); }));
  refresh_.start(kRefresh_ms);
}

BoardWindow::~BoardWindow() {
  board_.wire.ListenTo(nullptr);
  board_.cable.ListenTo(nullptr);
}

QWidget* BoardWindow::CreateState() {
  auto* state = new QGroupBox(QStringLiteral("Board"));
  auto* rows = new QFormLayout(state);
  chip_ = new QComboBox;
  chip_->setObjectName(QStringLiteral("Chip"));
  chip_->addItem(QStringLiteral("nothing"), static_cast<int>(ConnectedChip::None));
  chip_->addItem(QStringLiteral("VSK830"), static_cast<int>(ConnectedChip::Vsk830));
  chip_->addItem(QStringLiteral("VSK630"), static_cast<int>(ConnectedChip::Vsk630));
  chip_->addItem(QStringLiteral("RTD2120"), static_cast<int>(ConnectedChip::Rtd2120));
  chip_->setCurrentIndex(chip_->findData(static_cast<int>(board_.Connected())));
  connect(chip_, &QComboBox::currentIndexChanged, this, Guarded(this, [this] {
            board_.Connect(static_cast<ConnectedChip>(chip_->currentData().toInt()));
            ShowChip();
          }));
  rows->addRow(QStringLiteral("Connected chip"), chip_);
  rows->addRow(QStringLiteral("ISP entry"), identity_ = NamedLabel("Identity"));
  rows->addRow(QStringLiteral("In ISP mode"), ispMode_ = NamedLabel("IspMode"));
  rows->addRow(QStringLiteral("Seen on the bus"), traffic_ = NamedLabel("Traffic"));
  return state;
}

QWidget* BoardWindow::CreateRecording() {
  record_ = new QPushButton(QStringLiteral("Record the bus to a VCD file..."));
  record_->setObjectName(QStringLiteral("Record"));
  record_->setCheckable(true);
  connect(record_, &QPushButton::toggled, this,
          Guarded(this, [this] { ToggleRecording(record_->isChecked()); }));
  return record_;
}

void BoardWindow::ToggleRecording(bool on) {
  board_.cable.ListenTo(nullptr);
  recorder_.reset();
  recording_.close();
  if (!on) return;
  const QString name = QFileDialog::getSaveFileName(this, QStringLiteral("Record the bus"),
                                                    QStringLiteral("bus.vcd"));
  if (!name.isEmpty()) recording_.open(PathOf(name.toStdString()));
  if (!recording_.is_open()) return record_->setChecked(false);
  recorder_ = std::make_unique<VcdRecorder>(recording_);
  board_.cable.ListenTo(recorder_.get());
}

/// Lays out the tabs for the chip that is plugged in.
void BoardWindow::ShowChip() {
  flashTabs_.clear();
  while (flashes_->count() > 0) delete flashes_->widget(0);
  const SimulatedChip* chip = board_.Chip();
  for (int bank = 0; chip != nullptr && bank < chip->Banks(); ++bank) {
    auto* view = new QPlainTextEdit;
    view->setObjectName(QStringLiteral("Flash%1").arg(bank));
    view->setReadOnly(true);
    view->setLineWrapMode(QPlainTextEdit::NoWrap);
    QFont font;
    font.setFamilies({QStringLiteral("Liberation Mono"), QStringLiteral("Courier New")});
    font.setPixelSize(12);
    view->setFont(font);
    const QString title =
        chip->Banks() == 1 ? QStringLiteral("Flash") : QStringLiteral("Flash bank %1").arg(bank);
    flashes_->addTab(view, title);
    flashTabs_.push_back({&chip->Bank(bank), view, std::nullopt});
  }
  Refresh();
}

void BoardWindow::Refresh() {
  const SimulatedChip* chip = board_.Chip();
  identity_->setText(chip == nullptr ? QStringLiteral("-")
                                     : QString::fromStdString(chip->EntryText()));
  ispMode_->setText(chip == nullptr     ? QStringLiteral("-")
                    : chip->InIspMode() ? QStringLiteral("yes")
                                        : QStringLiteral("no"));
  traffic_->setText(QStringLiteral("%1 frames, %2 bytes, %3 of them refused")
                        .arg(counters_.frames)
                        .arg(counters_.bytes)
                        .arg(counters_.refused));
  for (FlashTab& tab : flashTabs_) {
    if (tab.shownVersion == tab.flash->Version()) continue;
    tab.view->setPlainText(FlashText(*tab.flash));
    tab.shownVersion = tab.flash->Version();
  }
}

}  // namespace simulator
