#include "simulator_window/recording_button.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QStyleOptionButton>
#include <cerrno>

#include "platform/files.h"
#include "widgets/dialogs.h"
#include "widgets/guarded.h"
#include "widgets/live_text.h"
#include "widgets/thread_hold.h"

namespace simulator {
namespace {

/// Empty when the operator chose none.
QString ChooseRecording(QWidget* window) {
  QFileDialog dialog(window, QStringLiteral("Record the bus"));
  dialog.setObjectName(QStringLiteral("RecordTo"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setNameFilter(QStringLiteral("Value change dumps (*.vcd)"));
  dialog.setDefaultSuffix(QStringLiteral("vcd"));
  dialog.selectFile(QStringLiteral("bus.vcd"));
  const ThreadHold hold;  // a screen reader's press is refused meanwhile
  const ThreadHold::Pause pause;
  return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

}  // namespace

RecordingButton::RecordingButton(SimulatedBoard& board) : board_(board) {
  setObjectName(QStringLiteral("Record"));
  ShowState();
  connect(this, &QPushButton::clicked, this, Asked(this, [this] { Toggle(); }));
}

RecordingButton::~RecordingButton() { board_.cable.ListenTo(nullptr); }

void RecordingButton::Toggle() {
  if (recorder_ != nullptr) return End();
  const QString name = ChooseRecording(this);
  if (!name.isEmpty()) Begin(name);
}

void RecordingButton::initStyleOption(QStyleOptionButton* option) const {
  QPushButton::initStyleOption(option);
  if (recorder_ != nullptr) option->state |= QStyle::State_On;
}

void RecordingButton::Begin(const QString& name) {
  name_ = name;
  errno = 0;
  file_.open(PathOf(name.toStdString()));
  recorder_ = std::make_unique<VcdRecorder>(file_);
  board_.cable.ListenTo(recorder_.get());
  file_.flush();
  file_ ? ShowState() : End();
}

void RecordingButton::Flush() {
  if (recorder_ == nullptr) return;
  file_.flush();
  if (!file_) End();
}

void RecordingButton::End() {
  if (recorder_ == nullptr) return;
  board_.cable.ListenTo(nullptr);
  recorder_.reset();
  const bool written = file_.flush().good();
  const std::string why = written ? std::string() : WhyBad(file_);
  file_.close();
  file_.clear();
  ShowState();
  if (written) return;
  ShowMessageBox(this, "The recording cannot be written: " + name_.toStdString(), why);
}

void RecordingButton::ShowState() {
  const bool recording = recorder_ != nullptr;
  setText(recording ? QStringLiteral("\u25CF Recording to %1 - press to stop")
                          .arg(QFileInfo(name_).fileName().replace(QLatin1String("&"),
                                                                   QLatin1String("&&")))
                    : QStringLiteral("Record the bus to a VCD file..."));
  setToolTip(recording ? PlainToolTip(name_) : QString());
  QFont bold = font();
  bold.setBold(recording);
  setFont(bold);
  QPalette colours = QApplication::palette();
  if (recording) colours.setColor(QPalette::ButtonText, QColor(0xB0, 0, 0));
  setPalette(colours);
}

}  // namespace simulator
