// The seam to the system's millisecond tick counter.
#pragma once

#include <cstdint>
#include <memory>

class TickCounter {
 public:
  virtual ~TickCounter() = default;

  /// Milliseconds since some fixed moment; wraps at 2^32 (about 49.7 days). Only unsigned
  /// differences of two readings mean anything.
  virtual std::uint32_t GetTickCount() = 0;
};

/// The machine's own counter. It advances 64 times a second, in steps of 15.625 ms: the bus
/// calibration counts readings within one step, and finer steps would make the bus too fast.
std::unique_ptr<TickCounter> SystemTickCounter();
