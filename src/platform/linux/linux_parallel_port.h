// The PC's parallel port on Linux. Finds out how to reach the address it is given: by the first
// of the ways that can, else not at all, and tells the operator once why it cannot. Knows nothing
// of boards and of the bus.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "platform/linux/port_access.h"
#include "platform/linux/port_system.h"
#include "platform/port_io.h"

class LinuxParallelPort final : public PortIo {
 public:
  /// `boardFolder`: of the board table. `ways`: in the order in which they are tried.
  LinuxParallelPort(std::unique_ptr<PortSystem> system, std::filesystem::path boardFolder,
                    Problem report, std::span<const PortWay> ways = kPortWays);
  /// Gives the port back.
  ~LinuxParallelPort() override;

  /// Gives the present port back and takes this one. When that fails there is no port until the
  /// next call, and `report` has been told why.
  void UsePort(const PortUse& use) override;

  /// A port that has gone is let go, and told.
  bool StillThere() override;

  void DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) override;
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t port) override;

 private:
  void TakePort();
  void GiveBack();

  bool Usable() const { return access_ != nullptr && !failed_; }
  /// The bits to be written, or to be sampled, that the port does not carry.
  int Lost(PortRegister which, std::uint8_t value) const;
  /// Told once for each use of a port.
  void NoteLost(PortRegister which, std::uint8_t value);
  /// The first failure is told, and ends the use of the port: what it answers from then on would be
  /// guesswork.
  void NoteFailure(const Status& access);

  const std::unique_ptr<PortSystem> system_;
  const Problem report_;
  const std::span<const PortWay> ways_;
  PortPlace place_;                     // of the port in use
  std::unique_ptr<PortAccess> access_;  // null: there is no port
  std::string device_;                  // what `access_` goes through, for messages
  bool failed_ = false;                 // an access to it
  bool lostTold_ = false;
};
