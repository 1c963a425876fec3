// The report of a run: begun and ended in one place, whatever the chip.
#pragma once

#include <chrono>
#include <functional>

#include "platform/tick_counter.h"
#include "run_log/run_log.h"

/// One for all runs: only one at a time goes on.
class RunReport {
 public:
  /// `clock`: its `FineTime` gives the duration.
  explicit RunReport(TickCounter& clock) : clock_(clock) {}

  /// Told of every run that sent an erase or an image, when it has ended.
  std::function<void(const RunLine&)> Ended = [](const RunLine&) {};

  /// A run begins. To be called behind the questions to the operator, which are no part of it.
  void Begin() { begun_ = clock_.FineTime(); }

  /// The run has ended as `line` tells; returns it with its duration. A line with an empty result
  /// text is of a run that sent nothing, and nobody is told.
  RunLine End(RunLine line) const {
    if (line.result.text.empty()) return line;
    line.duration = std::chrono::round<std::chrono::milliseconds>(clock_.FineTime() - begun_);
    Ended(line);
    return line;
  }

 private:
  TickCounter& clock_;
  std::chrono::nanoseconds begun_{};
};
