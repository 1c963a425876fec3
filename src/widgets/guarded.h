// Keeps what is thrown inside an event handler from leaving it.
#pragma once

#include <QWidget>
#include <exception>

/// Tells the operator why an action ended; the program goes on.
void ReportFailure(QWidget* window, const char* reason);

/// Wraps an event handler so that nothing is thrown out of it.
template <typename Handler>
auto Guarded(QWidget* window, Handler handler) {
  return [window, handler]() {
    try {
      handler();
    } catch (const std::exception& failure) {
      ReportFailure(window, failure.what());
    } catch (...) {
      ReportFailure(window, "unknown error");
    }
  };
}

/// The same for a handler that is a member of the window.
template <typename Window>
auto Guarded(Window* window, void (Window::*handler)()) {
  return Guarded(window, [window, handler] { (window->*handler)(); });
}
