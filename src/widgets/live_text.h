// Texts that change while the program runs, for those who see them and those who listen: every
// change is announced to a screen reader.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

/// The text is the label's accessible name as well.
void ShowLiveText(QLabel* label, const QString& text);

/// Shows the beginning of the text. One that is longer than its box is its tool tip too.
void ShowLiveText(QLineEdit* box, const QString& text);
/// The same, but shows the end: of a path, the file's name.
void ShowLiveTextEnd(QLineEdit* box, const QString& text);

void ShowLiveText(QPlainTextEdit* box, const QString& text);

/// Pure red, or black. The accessible description says what the text is, and that it is red.
void ShowLiveColour(QWidget* control, const QString& description, bool red);
