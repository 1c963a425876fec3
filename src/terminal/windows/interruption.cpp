#include "terminal/interruption.h"

#include <windows.h>

#include <atomic>
#include <csignal>
#include <cstdio>

namespace terminal {
namespace {

constexpr DWORD kLongestEnd_ms = 10'000;  // the system itself waits about five seconds

std::atomic<int> first = 0;
HANDLE ended = nullptr;

/// Runs in a thread of the system's. After the return from a closing console's event the system
/// ends the process, so that one is held back until the main thread is done.
BOOL WINAPI Note(DWORD event) {
  int none = 0;
  if (first.compare_exchange_strong(none, event == CTRL_C_EVENT ? SIGINT : SIGTERM)) {
    std::fputs("\nisp-write: ends when the operation that is running has ended\n", stderr);
  }
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
    WaitForSingleObject(ended, kLongestEnd_ms);
  }
  return TRUE;
}

}  // namespace

Interruption::Interruption() {
  first = 0;
  ended = CreateEventW(nullptr, /*bManualReset=*/TRUE, FALSE, nullptr);
  SetConsoleCtrlHandler(Note, TRUE);
}

Interruption::~Interruption() { SetEvent(ended); }

int Interruption::Signal() const { return first; }

}  // namespace terminal
