// The seam to the PC's I/O ports. Nothing else in the program reaches hardware.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/problem.h"

/// The parallel port's registers, relative to its base address.
enum class PortRegister : std::uint32_t { Data = 0, Status = 1, Control = 2 };

/// The highest I/O address.
inline constexpr std::uint32_t kLastIoPort = 0xFFFF;

/// What a parallel port is used for.
struct PortUse {
  std::uint32_t base = 0;    // I/O address of its data register, 0..0xFFFF
  std::uint8_t sampled = 0;  // the bits of the status register that are looked at
  std::uint8_t data = 0;     // both registers as they are with SDA and SCL released
  std::uint8_t control = 0;
};

/// One byte to or from an I/O port, immediately and in call order.
/// A port that cannot be reached swallows writes, and its reads say that there is no port.
class PortIo {
 public:
  virtual ~PortIo() = default;

  /// The accesses that follow go to this parallel port. No port access in itself. Called before the
  /// first access and at the first access after the address has changed: a register's number alone
  /// does not tell which port it belongs to, for 0x37A is the control register of 0x378 and the
  /// data register of 0x37A.
  virtual void UsePort(const PortUse& /*use*/) {}

  /// False when there is no port, or when it has gone since it was taken. No port access in itself,
  /// but too slow for each one: called once where an operation begins.
  virtual bool StillThere() { return true; }

  /// `port`: I/O address 0..0xFFFF.
  virtual void DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) = 0;
  /// Nothing when there is no port, or when it has failed since it was taken. No byte could say so:
  /// 0xFF is what a bus without a target shows.
  virtual std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t port) = 0;
};

/// Where no port is used.
class NoPort final : public PortIo {
 public:
  bool StillThere() override { return false; }
  void DlPortWritePortUchar(std::uint32_t /*port*/, std::uint8_t /*value*/) override {}
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t /*port*/) override { return {}; }
};

/// One port that the program could be told to use.
struct PortNote {
  std::optional<std::uint32_t> base;  // its address; nothing where none stands for it
  std::string device;                 // what it goes through
  std::string problem;                // why it cannot be reached now; empty when it can
};

/// The ports that are known on this machine, what could become one, and the one at `base`. Takes
/// none of them. `boardFolder`: as below.
std::vector<PortNote> SystemPorts(const std::filesystem::path& boardFolder, std::uint32_t base);

/// The machine's own parallel port. It is taken at the first `UsePort` and given back, with its
/// data and control registers as they were found, when it is left for another one and when the
/// object ends. `report` is called at most once for each cause after each `UsePort`.
/// On Windows a driver library reaches every port: none is taken or given back.
/// `boardFolder`: of the board table, beside which a way to reach the port may have a file.
std::unique_ptr<PortIo> SystemParallelPort(const std::filesystem::path& boardFolder,
                                           Problem report);
