#include "simulator_window/board_window.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "widgets/guarded.h"
#include "widgets/screen_space.h"

namespace simulator {
namespace {

constexpr int kRefresh_ms = 250;
constexpr int kGap = 24;                // between two facts in one row
constexpr QSize kWantedSize(570, 600);  // where the screen allows it

QLabel* LiveLabel(const char* name, const QString& description) {
  auto* label = new QLabel;
  label->setObjectName(QLatin1String(name));
  label->setAccessibleDescription(description);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

}  // namespace

ReopenButton::ReopenButton(QWidget& window)
    : QPushButton(QStringLiteral("Show the simulated board")) {
  setObjectName(QStringLiteral("ShowSimulatedBoard"));
  setWindowTitle(QStringLiteral("Simulated board"));
  setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setMinimumSize(200, 40);
  connect(this, &QPushButton::clicked, &window, [this, &window] {
    hide();
    window.show();
  });
}

BoardWindow::BoardWindow(SimulatedBoard& board) : board_(board) {
  setObjectName(QStringLiteral("SimulatedBoard"));
  setWindowTitle(QStringLiteral("Simulated board"));
  setAttribute(Qt::WA_ShowWithoutActivating);
  auto* content = new QWidget;
  QScrollArea* scroll = Scrolled(content);
  scroll->setWidgetResizable(true);
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins({});
  whole->addWidget(scroll);
  auto* rows = new QVBoxLayout(content);
  rows->setContentsMargins(8, 6, 8, 6);
  rows->setSpacing(4);
  rows->addWidget(CreateState());
  flashes_ = new QTabWidget;
  flashes_->setObjectName(QStringLiteral("Flash"));
  rows->addWidget(flashes_, 1);
  rows->addWidget(faults_ = new FaultBox(board_));
  rows->addWidget(record_ = new RecordingButton(board_));

  board_.wire.ListenTo(&counters_);
  ShowChip();
  connect(&refresh_, &QTimer::timeout, this, Guarded(this, [this] { Refresh(); }));
  refresh_.start(kRefresh_ms);
}

BoardWindow::~BoardWindow() { board_.wire.ListenTo(nullptr); }

void BoardWindow::ShowBeside(QWidget& launcher) {
  resize(kWantedSize.boundedTo(SpaceBeside(launcher)));
  PlaceBeside(*this, launcher);
  show();
  launcher.raise();
}

void BoardWindow::closeEvent(QCloseEvent* event) {
  event->accept();
  reopen_.move(pos());
  reopen_.show();
}

QLayout* BoardWindow::CreateChipRow() {
  chip_ = new QComboBox;
  chip_->setObjectName(QStringLiteral("Chip"));
  for (const SimulatedBoard::Choice& choice : SimulatedBoard::Choices()) {
    chip_->addItem(QLatin1String(choice.name), static_cast<int>(choice.chip));
  }
  chip_->setCurrentIndex(chip_->findData(static_cast<int>(board_.Connected())));
  connect(chip_, &QComboBox::currentIndexChanged, this, Guarded(this, [this] {
            board_.Connect(static_cast<ConnectedChip>(chip_->currentData().toInt()));
            ShowChip();
          }));
  powerCycle_ = new QPushButton(QStringLiteral("Power cycle"));
  powerCycle_->setObjectName(QStringLiteral("PowerCycle"));
  connect(powerCycle_, &QPushButton::clicked, this, Guarded(this, [this] {
            board_.PowerCycle();
            Refresh();
          }));
  auto* row = new QHBoxLayout;
  row->addWidget(chip_, 1);
  row->addWidget(powerCycle_);
  return row;
}

QWidget* BoardWindow::CreateState() {
  auto* state = new QGroupBox(QStringLiteral("Board"));
  auto* rows = new QFormLayout(state);
  rows->setContentsMargins(8, 4, 8, 4);
  rows->addRow(QStringLiteral("Connected chip"), CreateChipRow());
  qobject_cast<QLabel*>(rows->itemAt(0, QFormLayout::LabelRole)->widget())->setBuddy(chip_);
  rows->addRow(QStringLiteral("ISP entry"),
               identity_ = LiveLabel("Identity", QStringLiteral("ISP entry")));
  auto* seen = new QHBoxLayout;
  seen->addWidget(ispMode_ = LiveLabel("IspMode", QStringLiteral("In ISP mode")));
  seen->addSpacing(kGap);
  seen->addWidget(new QLabel(QStringLiteral("Seen on the bus")));
  seen->addWidget(traffic_ = LiveLabel("Traffic", QStringLiteral("Seen on the bus")), 1);
  rows->addRow(QStringLiteral("In ISP mode"), seen);
  return state;
}

/// Lays out the tabs for the chip that is plugged in.
void BoardWindow::ShowChip() {
  flashViews_.clear();
  while (flashes_->count() > 0) delete flashes_->widget(0);
  const SimulatedChip* chip = board_.Chip();
  for (int bank = 0; chip != nullptr && bank < chip->Banks(); ++bank) {
    auto* view = new FlashView(chip->Bank(bank));
    view->setObjectName(QStringLiteral("Flash%1").arg(bank));
    flashes_->addTab(view,
                     chip->Banks() == 1
                         ? QStringLiteral("Flash")
                         : QStringLiteral("Flash bank %1").arg(chip->FirstBankNumber() + bank));
    flashViews_.push_back(view);
  }
  powerCycle_->setEnabled(chip != nullptr);
  faults_->ShowChip();
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
  for (FlashView* view : flashViews_) view->Update();
  faults_->Refresh();
  record_->Flush();
}

}  // namespace simulator
