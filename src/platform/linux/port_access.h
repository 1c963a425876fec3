// A parallel port that was taken, and the two ways to take one. Knows nothing of the operator.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/linux/known_ports.h"
#include "platform/linux/port_system.h"

/// A system call that failed.
struct PortFault {
  const char* call = nullptr;  // its name; null when nothing failed
  int error = 0;               // errno

  explicit operator bool() const { return call != nullptr; }
};

/// The three registers of a port that is ours. The data and control registers are read when the
/// port is taken and put back when it is given back.
class PortAccess {
 public:
  /// Gives the port back if that has not been done.
  virtual ~PortAccess() = default;

  virtual PortFault WriteData(std::uint8_t value) = 0;
  virtual PortFault WriteControl(std::uint8_t value) = 0;
  /// `value` is untouched when the reading failed.
  virtual PortFault ReadStatus(std::uint8_t& value) = 0;

  /// The control bits that reach the port.
  virtual std::uint8_t ControlBits() const = 0;

  /// Puts control and data back, in this order, and leaves the port. Every step is tried; the first
  /// fault is returned. The access is dead afterwards; a second call does nothing.
  virtual PortFault GiveBack() = 0;
};

enum class Taking {
  Taken,
  NotOpened,  // the kernel gives no access this way; `fault` says why
  Held,       // another driver has the port; `holder` names it
  Failed,     // opened, but a call failed; `fault` says which
  Empty,      // no port answers at the address
};

struct TakenPort {
  Taking outcome = Taking::Taken;
  PortFault fault;
  std::string holder;
  std::unique_ptr<PortAccess> access;  // set when the outcome is `Taken`
};

/// By the kernel's ppdev driver. Never waits for a port that another driver holds.
TakenPort TakePpdev(PortSystem& system, const KnownPort& port);

/// By in and out instructions on `base`..`base` + 2, past any driver.
TakenPort TakeIoPorts(PortSystem& system, std::uint32_t base);
