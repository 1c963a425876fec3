// The seam to the PC's I/O ports. Nothing else in the program reaches hardware.
#pragma once

#include <cstdint>

/// One byte to or from an I/O port, immediately and in call order.
/// Implementations report no errors here: a port that cannot be reached swallows writes and reads
/// as 0xFF, as an empty bus does.
class PortIo {
 public:
  virtual ~PortIo() = default;

  /// `port`: I/O address 0..0xFFFF.
  virtual void DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) = 0;
  virtual std::uint8_t DlPortReadPortUchar(std::uint32_t port) = 0;
};

/// There is no parallel port: writes go nowhere, reads give an empty bus.
class NoPort final : public PortIo {
 public:
  void DlPortWritePortUchar(std::uint32_t, std::uint8_t) override {}
  std::uint8_t DlPortReadPortUchar(std::uint32_t) override { return 0xFF; }
};
