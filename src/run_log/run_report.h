// The report of a run: begun and ended in one place, whatever the chip.
#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "platform/tick_counter.h"
#include "run_log/run_log.h"

/// One for all runs: only one at a time goes on.
class RunReport {
 public:
  /// `clock`: its `FineTime` gives the duration.
  explicit RunReport(TickCounter& clock) : clock_(clock) {}

  /// Told of every run that has begun, when it has ended; may add to the line what it knows.
  std::function<void(RunLine&)> Ended = [](RunLine&) {};

  /// A run sends the first of what erases, programs or reads; within one that has begun nothing
  /// happens. What comes before it, the questions to the operator above all, is no part of a run.
  void Begin() {
    if (!begun_) begun_ = clock_.FineTime();
  }

  /// One that an exception ended is not told.
  void Forget() { begun_.reset(); }

  /// The run has ended as `line` tells; returns it with its duration. Nobody is told of one that
  /// has not begun.
  RunLine End(RunLine line) {
    if (!begun_) return line;
    line.duration = std::chrono::round<std::chrono::milliseconds>(clock_.FineTime() - *begun_);
    begun_.reset();
    ++told_;
    Ended(line);
    return line;
  }

  /// Runs that were told.
  int Told() const { return told_; }

 private:
  TickCounter& clock_;
  std::optional<std::chrono::nanoseconds> begun_;  // when the run that goes on began
  int told_ = 0;
};
