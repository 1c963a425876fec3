// A wish from outside to end the program. It waits for the operation that is running.
#pragma once

namespace terminal {

/// While it lives, such a wish is noted, and told once on the standard error; the program goes on
/// until it looks. One object at a time.
///
/// On Linux: SIGINT, SIGTERM and SIGHUP; a signal that was ignored stays ignored. SIGPIPE is none:
/// it is ignored from now on.
/// On Windows: the events of the console.
class Interruption {
 public:
  Interruption();
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  /// The number of the first signal that came; 0 for none.
  int Signal() const;
};

}  // namespace terminal
