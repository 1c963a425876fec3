// The seam to the PC's I/O ports. Nothing else in the program reaches hardware.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

/// One byte to or from an I/O port, immediately and in call order.
/// Implementations report no errors here: a port that cannot be reached swallows writes and reads
/// as 0xFF, as an empty bus does.
class PortIo {
 public:
  virtual ~PortIo() = default;

  /// The accesses that follow go to the parallel port whose data register is at `base`
  /// (0..0xFFFF). No port access in itself. Called before the first access and at the first access
  /// after the address has changed: a register's number alone does not tell which port it belongs
  /// to, for 0x37A is the control register of 0x378 and the data register of 0x37A.
  virtual void UsePort(std::uint32_t /*base*/) {}

  /// `port`: I/O address 0..0xFFFF.
  virtual void DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) = 0;
  virtual std::uint8_t DlPortReadPortUchar(std::uint32_t port) = 0;
};

/// Told why the port cannot be used: one message, in whole sentences, for the operator. Called in
/// the middle of a line operation, so it must not wait for the operator.
using PortProblem = std::function<void(const std::string& message)>;

/// The machine's own parallel port. It is taken at the first `UsePort` and given back, with its
/// data and control registers as they were found, when it is left for another one and when the
/// object ends. `report` is called at most once for each cause after each `UsePort`.
/// On Windows a driver library reaches every port: none is taken or given back, and `report` is
/// called at most once.
std::unique_ptr<PortIo> SystemParallelPort(PortProblem report);
