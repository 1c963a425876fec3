// Drives SDA and SCL on the parallel port and samples SDA, one port access per level change.
// Knows the wiring of the ISP board in use; knows nothing of bits, bytes or time.
#pragma once

#include <cstdint>
#include <utility>

#include "bus/isp_boards.h"
#include "platform/port_io.h"

/// The five line operations. Each is exactly one port access and reads `PortBase` and the row of
/// the board in use afresh, so a change takes effect at the next call.
///
///   output   direct: a set bit drives the line high     inverted: a set bit drives it low
///   SDA in   direct: a set bit means that SDA is low    inverted: a set bit means that it is high
///
/// Without a port, and with a board whose row is not complete, SDA always reads high: nobody
/// acknowledges and every bit is 1.
class IicPort {
 public:
  static constexpr std::int32_t kDefaultPortBase = 0x378;

  /// `report` is told once, at the first use of the bus, when the board in use cannot be used.
  IicPort(PortIo& io, const IspBoards& boards, Problem report)
      : io_(io), boards_(boards), report_(std::move(report)) {}

  std::int32_t PortBase = kDefaultPortBase;  // I/O address of the data register, 0..0xFFFF
  std::int16_t DataShadow = 0;               // what every other bit of the data register carries
  std::int16_t ControlShadow = 0;            // the same for the control register

  /// Sets both shadows to their idle patterns. Touches no port.
  void InitPortShadows();

  void SetSdaHigh() { Drive(PortRegister::Data, DataShadow, Board().SdaOut, true); }
  void SetSdaLow() { Drive(PortRegister::Data, DataShadow, Board().SdaOut, false); }
  void SetSclHigh() { Drive(PortRegister::Control, ControlShadow, Board().SclOut, true); }
  void SetSclLow() { Drive(PortRegister::Control, ControlShadow, Board().SclOut, false); }

  /// True when SDA is at logical 0: an acknowledge, or a 0 bit.
  bool SdaIsLow();

  /// The next access takes the port anew, as after a change of the address.
  void ReopenPort() { portInUse_ = -1; }

  /// An operation begins: false when the port in use has gone or cannot be used. No port access in
  /// itself; a port that is not in use yet is not looked for.
  bool StillThere() { return PortBase != portInUse_ || io_.StillThere(); }

  /// Leaves SCL and SDA high, as a STOP does; touches no port that was not in use.
  void ReleaseLines();

 private:
  const IspBoard& Board() const { return boards_.InUse(); }
  /// The register's I/O address; tells the port its base first when that is new.
  std::uint32_t PortOf(PortRegister which) {
    if (PortBase != portInUse_) AnnouncePort();
    return static_cast<std::uint32_t>(PortBase) + static_cast<std::uint32_t>(which);
  }
  void AnnouncePort();
  void TellMissingWiring();
  /// A register's value with the line high or low, and the shadow in the other bits.
  static std::uint8_t WithLine(std::int16_t shadow, const LineSpec& line, bool high);
  void Drive(PortRegister which, std::int16_t shadow, const LineSpec& line, bool high);

  PortIo& io_;
  const IspBoards& boards_;
  const Problem report_;
  bool boardTold_ = false;
  std::int32_t portInUse_ = -1;  // the base that `io_` was told last; -1 before the first access
};
