// Answers every modal dialog, and watches what the windows show.
#pragma once

#include <QObject>
#include <QString>
#include <random>

#include "soak/tally.h"

class QDialog;
class QWidget;

class DialogRobot final : public QObject {
 public:
  DialogRobot(std::mt19937& random, Tally& tally);

  QString file;           // the answer to the next file dialog; cancelled when empty
  bool declined = false;  // the robot has cancelled a question since this was last reset

  /// Notes a text of the control of this name.
  void Note(const QString& control, const QString& text);
  /// Notes what all windows show now.
  void NoteWindows();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void NoteControl(const QWidget* control);
  void Answer(QDialog* dialog);
  QString Typed(const QString& usual);

  std::mt19937& random_;
  Tally& tally_;
};
