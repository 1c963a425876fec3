// Texts that change while the program runs, for those who see them and those who listen.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

/// A label that a screen reader speaks by itself, wherever the focus is. It does not follow a
/// label's name as it changes, but speaks a notification as it appears: this is one to it.
class SpokenLabel final : public QLabel {
 public:
  using QLabel::QLabel;

  /// Names the label, and has it spoken when the event loop gets its next turn: once an operation,
  /// with the last text that the operation gave it. An empty text is not spoken.
  void Speak(const QString& text);

 private:
  bool speaks_ = false;  // at the event loop's next turn
};

/// Shows the text, and speaks it.
void ShowLiveText(SpokenLabel* label, const QString& text);

/// Shows the beginning of the text. One that is longer than its box is its tool tip too.
void ShowLiveText(QLineEdit* box, const QString& text);
/// The same, but shows the end: of a path, the file's name.
void ShowLiveTextEnd(QLineEdit* box, const QString& text);

/// Pure red, or black. The accessible description says what the text is, and that it is red.
void ShowLiveColour(QWidget* control, const QString& description, bool red);
