// Drives SDA and SCL on the parallel port and samples SDA, one port access per level change.
// Knows the wiring of the ISP board in use; knows nothing of bits, bytes or time.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "platform/port_io.h"

/// Where one bus line sits in its port register.
struct LineSpec {
  std::int32_t address = 0;  // register address as the board file gives it; stored only
  bool polarity = false;     // true: direct; false: the line passes through an inverter
  std::int16_t mask = 0;     // the line's bit, 1..255; 0 for a line that the board file left open
};

/// One row of the board table.
struct IspBoard {
  std::string name;
  LineSpec SdaOut;  // in the data register
  LineSpec SdaIn;   // in the status register
  LineSpec SclOut;  // in the control register
  LineSpec SclIn;   // stored only: SCL is never read back
};

/// The parallel port's registers, relative to its base address.
enum class PortRegister : std::uint32_t { Data = 0, Status = 1, Control = 2 };

/// The five line operations. Each is exactly one port access and reads `PortBase`, `CurrentBoard`
/// and the board's row afresh, so a change takes effect at the next call.
class IicPort {
 public:
  static constexpr std::int32_t kDefaultPortBase = 0x378;
  static constexpr int kBoards = 21;

  explicit IicPort(PortIo& io) : io_(io) {}

  std::int32_t PortBase = kDefaultPortBase;  // I/O address of the data register, 0..0xFFFF
  std::int16_t DataShadow = 0;               // what every other bit of the data register carries
  std::int16_t ControlShadow = 0;            // the same for the control register
  std::array<IspBoard, kBoards> BoardTable;
  std::int16_t CurrentBoard = 0;  // row in use, 0..20

  /// Sets both shadows to their idle patterns. Touches no port.
  void InitPortShadows();

  void SetSdaHigh() { Drive(PortRegister::Data, DataShadow, Board().SdaOut, true); }
  void SetSdaLow() { Drive(PortRegister::Data, DataShadow, Board().SdaOut, false); }
  void SetSclHigh() { Drive(PortRegister::Control, ControlShadow, Board().SclOut, true); }
  void SetSclLow() { Drive(PortRegister::Control, ControlShadow, Board().SclOut, false); }

  /// True when SDA is at logical 0: an acknowledge, or a 0 bit. A direct SDA input is a status bit
  /// that is set while SDA is low.
  bool SdaIsLow();

  /// Leaves SCL and SDA high, as a STOP does; touches no port that was not in use.
  void ReleaseLines();

 private:
  const IspBoard& Board() const { return BoardTable[static_cast<std::size_t>(CurrentBoard)]; }
  /// The register's I/O address; tells the port its base first when that is new.
  std::uint32_t PortOf(PortRegister which) {
    if (PortBase != portInUse_) AnnouncePort();
    return static_cast<std::uint32_t>(PortBase) + static_cast<std::uint32_t>(which);
  }
  void AnnouncePort();
  void Drive(PortRegister which, std::int16_t shadow, const LineSpec& line, bool high);

  PortIo& io_;
  std::int32_t portInUse_ = -1;  // the base that `io_` was told last; -1 before the first access
};
