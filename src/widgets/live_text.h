// Texts that change while the program runs, for those who see them and those who listen.
#pragma once

#include <QLabel>
#include <QLineEdit>

/// Has a control's text spoken by a screen reader, wherever the focus is. One does not follow the
/// texts of other controls than the one with the focus, but speaks a notification that appears:
/// this is one, which nobody sees.
class Announcer final : public QWidget {
 public:
  /// `control`: its accessible description is spoken with the text.
  explicit Announcer(QWidget* control);

  /// Speaks the text at the event loop's next turn: once an operation, the last text that the
  /// operation gave. An empty one is not spoken.
  void Speak(const QString& text);

 private:
  void Appear();

  const QWidget* const control_;
  QString text_;
  bool speaks_ = false;  // at the event loop's next turn
};

/// A label whose text is spoken.
class SpokenLabel final : public QLabel {
 public:
  explicit SpokenLabel(QWidget* parent) : QLabel(parent), announcer_(new Announcer(this)) {}

  void ShowText(const QString& text);

 private:
  Announcer* const announcer_;
};

/// The tool tip that shows this text, also one that looks like rich text, as a path can.
QString PlainToolTip(const QString& text);

/// Shows the beginning of the text. One that is longer than its box is its tool tip too.
void ShowLiveText(QLineEdit* box, const QString& text);
/// The same, but shows the end: of a path, the file's name.
void ShowLiveTextEnd(QLineEdit* box, const QString& text);

/// Pure red, or black. The accessible description says what the text is, and that it is red.
void ShowLiveColour(QWidget* control, const QString& description, bool red);
