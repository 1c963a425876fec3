// The simulated ISP cable: a parallel port whose register bits are wired to SDA and SCL through the
// same kind of board row that the line driver uses. It hangs on the port that is in use, whatever
// its address.
#pragma once

#include <cstdint>

#include "bus/isp_boards.h"
#include "platform/port_io.h"
#include "simulator/faults.h"
#include "simulator/wire_decoder.h"

namespace simulator {

/// Told the bus levels after every port write.
class LevelListener {
 public:
  virtual ~LevelListener() = default;
  /// `access`: number of the port access, counted from 1.
  virtual void Levels(std::uint64_t access, bool sda, bool scl) = 0;
};

class Cable final : public PortIo {
 public:
  Cable(const IspBoard& wiring, const Faults& faults, WireDecoder& wire)
      : wiring_(wiring), faults_(faults), wire_(wire) {}

  void ListenTo(LevelListener* listener) { listener_ = listener; }

  /// Writes and reads of any port since the start.
  std::uint64_t Accesses() const { return accesses_; }

  void UsePort(const PortUse& use) override { portBase_ = use.base; }
  void DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) override;
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t port) override;

 private:
  /// Wired-AND of master, target and a stuck line.
  bool Sda() const { return masterSda_ && !wire_.PullsSdaLow() && !faults_.sdaStuckLow; }

  const IspBoard wiring_;
  std::uint32_t portBase_ = 0;
  const Faults& faults_;
  WireDecoder& wire_;
  LevelListener* listener_ = nullptr;
  bool masterSda_ = true;
  bool masterScl_ = true;
  std::uint64_t accesses_ = 0;
};

}  // namespace simulator
