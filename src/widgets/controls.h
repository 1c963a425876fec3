// Builds the windows' controls: each at its given place, under its given name.
#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <functional>

#include "widgets/live_text.h"

/// A place in twips: 1/1440 inch, 15 to a logical pixel. A width or height of 0 is taken from the
/// control's own content.
struct Twips {
  int left, top, width = 0, height = 0;
};

constexpr int PixelsOf(int twips) { return twips / 15; }

/// Puts the control at its place; it grows to the right and downwards when its caption needs more
/// than the given size.
void Place(QWidget* control, const Twips& at);

/// Gives a window's client area its size, once and for all.
void FixClientArea(QWidget* client, int widthTwips, int heightTwips);

/// An option that runs its action whenever it becomes selected, and at every click of the operator
/// even when it is selected already. The Tab key enters its frame at the selected option.
class OptionButton : public QRadioButton {
 public:
  OptionButton(const QString& caption, QWidget* frame);
  void OnSelected(const std::function<void()>& action);

 private:
  bool selectedBeforeClick_ = false;
};

QLabel* AddLabel(QWidget* parent, const char* name, const QString& caption, const Twips& at);
/// An empty label for a status text; `description`: what a screen reader is told the text is.
SpokenLabel* AddSpokenLabel(QWidget* parent, const char* name, const QString& description,
                            const Twips& at);
QPushButton* AddButton(QWidget* parent, const char* name, const QString& caption, const Twips& at);
QGroupBox* AddFrame(QWidget* parent, const char* name, const QString& caption, const Twips& at);
OptionButton* AddOption(QGroupBox* frame, const char* name, const QString& caption,
                        const Twips& at);
/// A one-line text box; `accessibleName`: what a screen reader calls it.
QLineEdit* AddTextBox(QWidget* parent, const char* name, const QString& accessibleName,
                      const Twips& at);
/// The same for what the program shows: its text can be copied, not edited.
QLineEdit* AddReadOnlyBox(QWidget* parent, const char* name, const QString& accessibleName,
                          const Twips& at);
/// The same with many lines.
QPlainTextEdit* AddTextDisplay(QWidget* parent, const char* name, const QString& accessibleName,
                               const Twips& at);

class QAction;
class QMenu;

/// Adds an entry to a menu: unavailable, greyed, until it is given an action.
QAction* AddMenuItem(QMenu* menu, const char* name, const QString& caption,
                     const char* shortcut = "");
/// Gives the entry its action.
void OnChosen(QAction* item, const std::function<void()>& action);

/// Lets the menu shortcuts win over the editing keys of the window's text boxes, for instance
/// Ctrl+A and Ctrl+X.
void PreferMenuShortcuts(QWidget* window);
