// Turns SIGINT, SIGTERM and SIGHUP into a normal end of the program, so that the parallel port is
// given back on the way out.
#pragma once

#include <QSocketNotifier>
#include <memory>

/// While it lives, each of these signals ends the event loop, with exit status 0, as soon as the
/// handler that is running returns; one that comes before the loop has begun ends it at its
/// beginning. A signal that was ignored stays ignored. One object at a time.
class QuitSignals {
 public:
  QuitSignals();
  ~QuitSignals();
  QuitSignals(const QuitSignals&) = delete;
  QuitSignals& operator=(const QuitSignals&) = delete;

 private:
  int readEnd_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
};
