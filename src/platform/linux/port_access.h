// A parallel port that was taken, and the ways to take one.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

#include "platform/linux/port_system.h"
#include "platform/port_io.h"
#include "platform/status.h"

/// What a way is told of the port that it is to reach.
struct PortPlace {
  PortUse use = {};
  std::filesystem::path folder;  // of the board table: a way's own file stands beside it
};

/// The three registers of a port that is ours. Where the data and control registers can be read,
/// they are put back as they were when it is given back.
class PortAccess {
 public:
  /// Gives the port back if that has not been done.
  virtual ~PortAccess() = default;

  /// `which`: the data or the control register.
  virtual Status Write(PortRegister which, std::uint8_t value) = 0;
  virtual Result<std::uint8_t> ReadStatus() = 0;

  /// The port was taken from the kernel. Its registers can still be used, to no effect.
  virtual bool Gone() const { return false; }

  /// The bits of a register that reach the port's pins.
  virtual std::uint8_t Carried(PortRegister /*which*/) const { return 0xFF; }

  /// What the operator is told of a failure of this access; empty for the usual words. `device`:
  /// the port's, with its `base`.
  virtual std::string Words(std::uint32_t /*base*/, const std::string& /*device*/,
                            const Status& /*failure*/) const {
    return {};
  }

  /// Puts control and data back, or their lines to rest, in this order, and leaves the port. Every
  /// step is tried; the first failure is returned. The access is dead afterwards; a second call
  /// does nothing.
  virtual Status GiveBack() = 0;
};

/// What became of an attempt to take a port.
struct TakenPort {
  std::unique_ptr<PortAccess> access = {};  // null: it was not taken
  std::string device = {};                  // what a taken port goes through, for messages
  std::string problem = {};  // for the operator; empty when this way knows no such port
  /// Another way may be tried. Not past a driver that has the port: two masters' signals would mix.
  bool othersMayTry = false;
};

/// One way to reach a port. It tells nobody, and leaves nothing taken when it fails.
using PortWay = TakenPort (*)(PortSystem& system, const PortPlace& place);

/// By the kernel's ppdev driver. Waits at most two seconds for a port that another driver holds.
TakenPort TakePpdev(PortSystem& system, const PortPlace& place);

/// The ports that the driver has, each with why it could not be taken now. Takes none of them.
std::vector<PortNote> PpdevPorts(PortSystem& system);

/// By in and out instructions on the base and the two addresses behind it, past any driver.
TakenPort TakeIoPorts(PortSystem& system, const PortPlace& place);

/// The same, for a list: reads the registers and leaves them as they are.
PortNote IoPortsAt(PortSystem& system, std::uint32_t base);

/// As lines of GPIO chips, at an address that "GpioPort.csv" describes. No other way may be tried
/// there.
TakenPort TakeGpio(PortSystem& system, const PortPlace& place);

/// In the order in which they are tried: by an x86 processor, and by others, which have no in and
/// out instructions.
inline constexpr std::array<PortWay, 3> kX86PortWays{TakeGpio, TakePpdev, TakeIoPorts};
inline constexpr std::array<PortWay, 2> kOtherPortWays{TakeGpio, TakePpdev};
#if defined(__x86_64__) || defined(__i386__)
inline constexpr std::span<const PortWay> kPortWays = kX86PortWays;
#else
inline constexpr std::span<const PortWay> kPortWays = kOtherPortWays;
#endif
