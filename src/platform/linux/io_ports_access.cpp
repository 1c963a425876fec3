#include <cerrno>
#include <utility>

#include "platform/linux/known_ports.h"
#include "platform/linux/port_access.h"
#include "platform/linux/port_messages.h"
#include "text/hex_text.h"

namespace {

constexpr std::uint32_t kRegisters = 3;  // data, status, control
constexpr const char* kDevice = "direct access";
constexpr std::uint8_t kEmptyBus = 0xFF;  // what an address reads at which nothing answers

Status Allow(PortSystem& system, std::uint32_t base, bool allow) {
  return Status::OfCall("ioperm", system.IoPerm(base, kRegisters, allow));
}

class IoPortsAccess final : public PortAccess {
 public:
  /// The right to the three I/O ports must have been given.
  IoPortsAccess(PortSystem& system, std::uint32_t base)
      : system_(system),
        base_(base),
        data_(system.In(At(PortRegister::Data))),
        control_(system.In(At(PortRegister::Control))) {}
  ~IoPortsAccess() override { static_cast<void>(GiveBack()); }
  IoPortsAccess(const IoPortsAccess&) = delete;
  IoPortsAccess& operator=(const IoPortsAccess&) = delete;

  Status Write(PortRegister which, std::uint8_t value) override {
    system_.Out(At(which), value);
    return {};
  }
  Result<std::uint8_t> ReadStatus() override { return system_.In(At(PortRegister::Status)); }

  Status GiveBack() override {
    if (!std::exchange(ours_, false)) return {};
    system_.Out(At(PortRegister::Control), control_);
    system_.Out(At(PortRegister::Data), data_);
    return Allow(system_, base_, false);
  }

 private:
  std::uint32_t At(PortRegister which) const { return base_ + static_cast<std::uint32_t>(which); }

  PortSystem& system_;
  const std::uint32_t base_;
  const std::uint8_t data_;
  const std::uint8_t control_;
  bool ours_ = true;
};

/// A port's control register never reads so: its interrupt and direction bits are clear at rest.
bool NothingAnswers(PortSystem& system, std::uint32_t base) {
  for (std::uint32_t i = 0; i < kRegisters; ++i) {
    if (system.In(base + i) != kEmptyBus) return false;
  }
  return true;
}

/// `direct`: why direct access failed, or `Ok` when nothing answered.
TakenPort Refused(PortSystem& system, std::uint32_t base, const Status& direct) {
  const auto known = KnownPorts(system);
  if (direct.Error() != EPERM || !system.IsRoot()) {
    return {.problem = port_messages::NoSuchPort(base, known, direct), .othersMayTry = true};
  }
  const std::string lockdown(FirstLine(system.ReadText("/sys/kernel/security/lockdown")));
  return {.problem = port_messages::DirectAccessRefusedToRoot(base, known, lockdown),
          .othersMayTry = true};
}

}  // namespace

PortNote IoPortsAt(PortSystem& system, std::uint32_t base) {
  const Status allowed = Allow(system, base, true);
  const bool answers = allowed.Ok() && !NothingAnswers(system, base);
  if (allowed.Ok()) system.IoPerm(base, kRegisters, false);
  return {base, kDevice, answers ? std::string() : Refused(system, base, allowed).problem};
}

TakenPort TakeIoPorts(PortSystem& system, const PortPlace& place) {
  const std::uint32_t base = place.use.base;
  const Status allowed = Allow(system, base, true);
  if (!allowed.Ok()) return Refused(system, base, allowed);
  if (NothingAnswers(system, base)) {
    system.IoPerm(base, kRegisters, false);
    return Refused(system, base, {});
  }
  return {.access = std::make_unique<IoPortsAccess>(system, base), .device = kDevice};
}
