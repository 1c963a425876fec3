#include "ui/settings_window.h"

#include <QKeyEvent>
#include <QShortcut>

#include "text/hex_text.h"
#include "widgets/dialogs.h"
#include "widgets/guarded.h"
#include "widgets/screen_space.h"
#include "widgets/thread_hold.h"

namespace {

constexpr int kSlowest = 10;
constexpr int kFastest = 1;
constexpr int kInitialSpeed = 5;

void SetHeadingFont(QLabel* label, const QString& caption, int pixels) {
  QFont font;
  font.setFamilies({QStringLiteral("宋体"), QStringLiteral("SimSun"),
                    QStringLiteral("Microsoft YaHei"), QStringLiteral("WenQuanYi Micro Hei")});
  font.setPixelSize(pixels);
  label->setFont(font);
  label->setText(caption);
  label->setAccessibleName(caption);
  label->resize(label->size().expandedTo(label->sizeHint()));
}

}  // namespace

Form2::Form2(IicPort& port, PortAddressFile& portAddress, tongxun::BusTiming& timing,
             std::function<void()> closed)
    : ClosesOnce(std::move(closed)),
      client_(ClientOf(*this, {PixelsOf(4680), PixelsOf(6090)})),
      port_(port),
      portAddress_(portAddress),
      timing_(timing) {
  setObjectName(QStringLiteral("Form2"));
  setWindowTitle(QStringLiteral("Setting"));

  CreateHeading();
  CreateAddress();
  CreateSpeed();
  Connect();
  slider_->setValue(timing_.SpeedFactor);
  ShowSpeedFactor(slider_->value());
  ShowPortAddress();
  portAddressBox_->setFocus();
}

void Form2::CreateHeading() {
  constexpr int kTwelvePoints = 16;  // logical pixels
  constexpr int kTenAndAHalfPoints = 14;
  SetHeadingFont(AddLabel(client_, "Label1", QString(), {480, 480, 3855, 375}),
                 QStringLiteral("Halvern VSK Isp Writer Program"), kTwelvePoints);
  SetHeadingFont(AddLabel(client_, "Label2", QString(), {1440, 960, 1335, 375}),
                 QStringLiteral("Version V" ISP_WRITER_VERSION_DIGITS), kTenAndAHalfPoints);
  SetHeadingFont(AddLabel(client_, "Label3", QString(), {600, 1440, 3495, 375}),
                 QStringLiteral("Halvern Technolog Information"), kTwelvePoints);
}

void Form2::CreateAddress() {
  enterButton_ = AddButton(client_, "Enter", QStringLiteral("Enter"), {480, 3840, 1095, 375});
  backButton_ = AddButton(client_, "Command1", QStringLiteral("Back"), {2760, 3840, 1095, 375});

  const QString caption = QStringLiteral("PortAddress:");
  AddLabel(client_, "PortAddress", caption, {360, 5640, 1080, 180});
  portAddressBox_ = AddTextBox(client_, "Text3", caption, {1680, 5520, 2655, 375});
  portAddressBox_->setMaxLength(4);
}

void Form2::CreateSpeed() {
  const QString caption = QStringLiteral("Speed Adjust");
  AddLabel(client_, "Speed", caption, {360, 4560, 1080, 180});
  speedFactor_ = AddReadOnlyBox(client_, "Text2", caption, {2760, 4560, 1095, 270});

  slider_ = new QSlider(Qt::Horizontal, client_);
  slider_->setObjectName(QStringLiteral("HScroll1"));
  slider_->setAccessibleName(caption);
  slider_->setRange(kFastest, kSlowest);
  slider_->setPageStep(1);
  slider_->setTracking(false);  // a drag counts where it is let go
  slider_->setValue(kInitialSpeed);
  Place(slider_, {360, 4920, 3975, 255});
}

void Form2::Connect() {
  connect(enterButton_, &QPushButton::clicked, this, Asked(this, &Form2::Enter_Click));
  connect(backButton_, &QPushButton::clicked, this, Asked(this, &Form2::Command1_Click));
  connect(slider_, &QSlider::valueChanged, this, Guarded(this, &Form2::HScroll1_Change));
  connect(slider_, &QSlider::sliderMoved, this, Guarded(this, &Form2::HScroll1_Scroll));
  const auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
  connect(escape, &QShortcut::activated, this, Guarded(this, &Form2::Command1_Click));
  portAddressBox_->installEventFilter(this);
}

void Form2::Enter_Click() {
  if (ApplyPortAddress()) close();
}

void Form2::Command1_Click() { close(); }

void Form2::Text3_KeyUp() { ApplyPortAddress(); }

void Form2::HScroll1_Change() {
  const ThreadHold hold;
  const int speedFactor = slider_->value();
  ShowSpeedFactor(speedFactor);
  timing_.SpeedFactor = static_cast<std::int16_t>(speedFactor);
  timing_.CalibrateSpeed();
}

void Form2::ShowSpeedFactor(int speedFactor) {
  speedFactor_->setText(QString::number(speedFactor));
}

void Form2::HScroll1_Scroll() { ShowSpeedFactor(slider_->sliderPosition()); }

void Form2::ShowPortAddress() { portAddressBox_->setText(TextOf(HexText(port_.PortBase))); }

bool Form2::ApplyPortAddress() {
  // At most four characters, so at most 0xFFFF.
  const auto address = WholeHex(portAddressBox_->text().trimmed().toStdString());
  if (!address) {
    ShowPortAddress();
    ShowMessageBox(this, "please input HEX number:(0000-FFFF)");
    return false;
  }
  port_.PortBase = *address == 0 ? IicPort::kDefaultPortBase : static_cast<std::int32_t>(*address);
  port_.ReopenPort();  // whatever kept it from being used may have been mended
  if (*address == 0) ShowPortAddress();
  ShowMessageBox(this, "Parallel Address Modify is 0x" + HexText(port_.PortBase),
                 portAddress_.SavePortAddress().Reason());
  return true;
}

bool Form2::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) {
    return QWidget::eventFilter(watched, event);
  }
  const auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter) return false;
  if (key->isAutoRepeat()) return true;
  // The release counts, but only of a key that was pressed here: the release of an Enter that
  // closed a message box arrives here too.
  const bool released = event->type() == QEvent::KeyRelease && enterPressed_;
  enterPressed_ = event->type() == QEvent::KeyPress;
  if (released) Asked(this, &Form2::Text3_KeyUp)();
  return true;
}
