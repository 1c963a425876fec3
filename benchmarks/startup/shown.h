// What a started program tells the benchmark.
#pragma once

#include <unistd.h>

#include <QApplication>
#include <QWidget>
#include <QWindow>

/// Runs the event loop until the window was shown and painted, writes one byte to the standard
/// output, and waits until the benchmark has looked at the process and closes the standard input.
inline int TellWhenShown(QWidget& window) {
  window.show();
  while (!window.windowHandle()->isExposed()) {
    QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  QApplication::processEvents();
  char byte = 1;
  const bool told = write(STDOUT_FILENO, &byte, 1) == 1;
  while (read(STDIN_FILENO, &byte, 1) > 0) {
  }
  return told ? 0 : 1;
}
