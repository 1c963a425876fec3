// The windows and their controls by name, and the dialogs that they open: for whoever plays an
// operator's session.
#pragma once

#include <QApplication>
#include <QFileDialog>
#include <QTimer>
#include <functional>
#include <stdexcept>
#include <string>

/// The visible window of this name; null when there is none.
QWidget* ShownWindow(const char* name);

/// A control or a menu entry of a visible window. Throws when the window is not open, or holds none
/// of that name and kind.
template <typename Control>
Control* ByName(const char* window, const char* name) {
  const QWidget* shown = ShownWindow(window);
  if (shown == nullptr) throw std::runtime_error(std::string("the window is not open: ") + window);
  auto* control = shown->findChild<Control*>(QLatin1String(name));
  if (control == nullptr) throw std::runtime_error(std::string(window) + " has no " + name);
  return control;
}

/// What a label, a box or a button of a visible window shows.
QString ShownText(const char* window, const char* control);

/// Takes this file in the file dialog.
void Choose(QFileDialog& dialog, const QString& file);

/// Answers the next dialog of this kind, which may open some turns of the event loop later: looks
/// for it once in 10 ms, `tries` times.
template <typename Dialog>
void AnswerDialog(const std::function<void(Dialog&)>& answer, int tries = 500) {
  QTimer::singleShot(10, qApp, [=] {
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    if (dialog != nullptr) return answer(*dialog);
    if (tries > 1) AnswerDialog<Dialog>(answer, tries - 1);
  });
}
