// The PC's I/O ports through the port driver library "dlportio.dll".
#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "platform/port_io.h"
#include "platform/status.h"

/// Loads the library at the first port access, by its plain name: from the program's folder first,
/// then along the system's search path. Holds it until destroyed. Port and value reach the library
/// as they are, one call for each access.
///
/// When the library cannot be loaded or lacks an entry point, `report` is told so once, from within
/// that access. From then on there is no port: writes go nowhere, reads give nothing, and the
/// library is let go. `UsePort` gives it another chance.
class DlPortIo final : public PortIo {
 public:
  explicit DlPortIo(Problem report) : report_(std::move(report)) {}
  ~DlPortIo() override { Release(); }
  DlPortIo(const DlPortIo&) = delete;
  DlPortIo& operator=(const DlPortIo&) = delete;

  void UsePort(const PortUse& use) override;
  void DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) override;
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t port) override;

  /// Loads the library when that was not tried since the last `UsePort`: no port access in itself.
  void LoadOnce();

 private:
  using WriteEntry = void(__stdcall*)(std::uint32_t port, std::uint8_t value);
  using ReadEntry = std::uint8_t(__stdcall*)(std::uint32_t port);

  Status Bind();
  void Release();

  const Problem report_;
  bool tried_ = false;
  void* library_ = nullptr;
  WriteEntry write_ = nullptr;  // both entry points, or neither
  ReadEntry read_ = nullptr;
};
