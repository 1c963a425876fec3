#include "soak/dialog_robot.h"

#include <QApplication>
#include <QEvent>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>

#include "session/by_name.h"
#include "soak/known_texts.h"
#include "soak/random_faults.h"

DialogRobot::DialogRobot(std::mt19937& random, Tally& tally) : random_(random), tally_(tally) {
  qApp->installEventFilter(this);
}

void DialogRobot::Note(const QString& control, const QString& text) {
  const QString entry = control + ": " + text;
  if (!tally_.texts.insert(entry).second || IsKnownText(control, text)) return;
  tally_.unknownTexts << entry;
}

void DialogRobot::NoteControl(const QWidget* control) {
  const QString name = control->objectName();
  const QString window = control->window()->objectName();
  if (const auto* box = qobject_cast<const QPlainTextEdit*>(control)) {
    if (name == "Text1") return Note(name, box->toPlainText());
    for (const QString& line : box->toPlainText().split('\n')) Note(name, line);
  } else if (const auto* label = qobject_cast<const QLabel*>(control)) {
    if (window == "Form1" && (name == "Label2" || name == "Label3")) Note(name, label->text());
  } else if (const auto* line = qobject_cast<const QLineEdit*>(control)) {
    const bool number = name == "Text3" || name == "Text4" || name == "Text5" || name == "Text6";
    if (window == "Form1" && number) Note(name, line->text());
  }
}

void DialogRobot::NoteWindows() {
  for (const QWidget* window : QApplication::topLevelWidgets()) {
    if (!window->isVisible()) continue;
    for (const QWidget* control : window->findChildren<QWidget*>()) NoteControl(control);
  }
}

bool DialogRobot::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Paint) {
    auto* widget = qobject_cast<QWidget*>(watched);
    auto* box = widget == nullptr ? nullptr : qobject_cast<QPlainTextEdit*>(widget->parent());
    if (widget != nullptr) NoteControl(box != nullptr ? box : widget);
  } else if (event->type() == QEvent::Show) {
    if (auto* dialog = qobject_cast<QDialog*>(watched)) {
      const QPointer<QDialog> shown(dialog);
      QMetaObject::invokeMethod(
          qApp,
          [this, shown] {
            if (shown) Answer(shown);
          },
          Qt::QueuedConnection);
    }
  }
  return false;
}

/// Mostly what the box asks for, now and then something else.
QString DialogRobot::Typed(const QString& usual) {
  static const QStringList others{"", "0", "GG", "12345", " 5", "00ff", "FFFF", "8000", "zz zz"};
  if (Pick(random_, 0, 3) == 0) return others[static_cast<qsizetype>(Pick(random_, 0, 8))];
  const auto most = usual.size() == 2 ? 0xFFU : 0xFFFFU;
  return QString("%1").arg(Pick(random_, 0, most), static_cast<int>(usual.size()), 16, QChar('0'));
}

void DialogRobot::Answer(QDialog* dialog) {
  if (auto* message = qobject_cast<QMessageBox*>(dialog)) {
    Note("dialog", message->text());
    Note("dialog", message->informativeText());
    QAbstractButton* cancel = message->button(QMessageBox::Cancel);
    const bool refuse = cancel != nullptr && Pick(random_, 0, 1) == 0;
    declined = declined || refuse;
    (refuse ? cancel : message->button(QMessageBox::Ok))->click();
  } else if (auto* input = qobject_cast<QInputDialog*>(dialog)) {
    Note("dialog", input->labelText());
    input->setTextValue(Typed(input->textValue()));
    input->accept();
  } else if (auto* files = qobject_cast<QFileDialog*>(dialog)) {
    if (file.isEmpty()) return files->reject();
    Choose(*files, file);
  }
}
