// Keeps what is thrown inside an event handler from leaving it.
#pragma once

#include <QWidget>
#include <exception>

#include "widgets/dialogs.h"
#include "widgets/thread_hold.h"

/// Wraps an event handler so that nothing is thrown out of it: the operator is told why the action
/// ended, and the program goes on.
template <typename Handler>
auto Guarded(QWidget* window, Handler handler) {
  return [window, handler]() {
    try {
      handler();
    } catch (const std::exception& failure) {
      ShowFailureBox(window, failure.what());
    } catch (...) {
      ShowFailureBox(window, "unknown error");
    }
  };
}

/// The same for a handler that is a member of the window.
template <typename Window>
auto Guarded(Window* window, void (Window::*handler)()) {
  return Guarded(window, [window, handler] { (window->*handler)(); });
}

/// The same for a command: a button, a menu entry, an option that uses the bus. What the operator
/// asks for may be discarded.
template <typename Handler>
auto Asked(QWidget* window, Handler handler) {
  return Guarded(window, [handler] {
    if (!ThreadHold::RefusesActions()) handler();
  });
}
template <typename Window>
auto Asked(Window* window, void (Window::*handler)()) {
  return Asked(window, [window, handler] { (window->*handler)(); });
}
