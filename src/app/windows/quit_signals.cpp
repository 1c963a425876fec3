#include "app/quit_signals.h"

#include <windows.h>

#include <QCoreApplication>
#include <QWinEventNotifier>

namespace {

constexpr DWORD kLongestEnd_ms = 10'000;  // the system itself waits about five seconds

HANDLE quit = nullptr;   // set by the first console event, and stays set
HANDLE ended = nullptr;  // set when the port has been given back

/// Runs in a thread of the system's. After the return from a closing console's event the system
/// ends the process, so that one is held back until the main thread is done.
BOOL WINAPI HandleConsoleEvent(DWORD event) {
  SetEvent(quit);
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
    WaitForSingleObject(ended, kLongestEnd_ms);
  }
  return TRUE;
}

HANDLE NewEvent() { return CreateEventW(nullptr, /*bManualReset=*/TRUE, FALSE, nullptr); }

}  // namespace

struct QuitSignals::Watch {
  QWinEventNotifier notifier{quit};
};

QuitSignals::QuitSignals() {
  quit = NewEvent();
  ended = NewEvent();
  watch_ = std::make_unique<Watch>();
  // The event stays set, so that an `exit` that met no running loop is said again in it.
  QObject::connect(&watch_->notifier, &QWinEventNotifier::activated,
                   [] { QCoreApplication::exit(); });
  SetConsoleCtrlHandler(HandleConsoleEvent, TRUE);
}

QuitSignals::~QuitSignals() {
  watch_.reset();
  // The two events stay open: the handler may still be waiting for this one.
  SetEvent(ended);
}
