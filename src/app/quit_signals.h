// Turns the system's wish to end the program into a normal end, so that the parallel port is given
// back on the way out.
#pragma once

#include <memory>

/// While it lives, each such wish ends the event loop, with exit status 0, as soon as the handler
/// that is running returns; one that comes before the loop has begun ends it at its beginning.
/// One object at a time.
///
/// On Linux: SIGINT, SIGTERM and SIGHUP; a signal that was ignored stays ignored.
/// On Windows: the events of a console that the program is attached to. The system waits with the
/// program's end, for some seconds, until this object ends.
class QuitSignals {
 public:
  QuitSignals();
  ~QuitSignals();
  QuitSignals(const QuitSignals&) = delete;
  QuitSignals& operator=(const QuitSignals&) = delete;

 private:
  struct Watch;
  std::unique_ptr<Watch> watch_;
};
