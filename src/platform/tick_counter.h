// The seam to the system's millisecond tick counter.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>

class TickCounter {
 public:
  virtual ~TickCounter() = default;

  /// Milliseconds since some fixed moment; wraps at 2^32 (about 49.7 days). Only unsigned
  /// differences of two readings mean anything. It always advances: every wait relies on that.
  virtual std::uint32_t GetTickCount() = 0;

  /// A clock for what is shorter than a tick or takes no part in waiting. Only differences mean
  /// anything. A clock that stands still leaves delays of one increment a step, which suits tests.
  virtual std::chrono::nanoseconds FineTime() {
    return std::chrono::steady_clock::now().time_since_epoch();
  }
};

/// The machine's own counter. It advances 64 times a second, in steps of 15.625 ms: the bus
/// calibration counts readings within one step, and needs at least a thousand of them.
std::unique_ptr<TickCounter> SystemTickCounter();
