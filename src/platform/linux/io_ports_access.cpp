#include <cerrno>

#include "platform/linux/known_ports.h"
#include "platform/linux/port_access.h"
#include "platform/linux/port_messages.h"
#include "text/hex_text.h"

namespace {

constexpr std::uint32_t kRegisters = 3;  // data, status, control
constexpr const char* kDevice = "direct access";
constexpr std::uint8_t kEmptyBus = 0xFF;  // what an address reads at which nothing answers

class IoPortsAccess final : public PortAccess {
 public:
  /// The right to the three I/O ports must have been given.
  IoPortsAccess(PortSystem& system, std::uint32_t base)
      : system_(system),
        base_(base),
        data_(system.In(At(PortRegister::Data))),
        control_(system.In(At(PortRegister::Control))) {}
  ~IoPortsAccess() override { GiveBack(); }
  IoPortsAccess(const IoPortsAccess&) = delete;
  IoPortsAccess& operator=(const IoPortsAccess&) = delete;

  PortFault Write(PortRegister which, std::uint8_t value) override {
    system_.Out(At(which), value);
    return {};
  }
  PortFault ReadStatus(std::uint8_t& value) override {
    value = system_.In(At(PortRegister::Status));
    return {};
  }

  PortFault GiveBack() override {
    if (!ours_) return {};
    ours_ = false;
    Write(PortRegister::Control, control_);
    Write(PortRegister::Data, data_);
    const int result = system_.IoPerm(base_, kRegisters, false);
    return result < 0 ? PortFault{"ioperm", -result} : PortFault{};
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

/// `fault`: why direct access failed; none when nothing answered.
TakenPort Refused(PortSystem& system, std::uint32_t base, PortFault fault) {
  const auto known = KnownPorts(system);
  if (fault.error != EPERM || !system.IsRoot()) {
    return {.problem = port_messages::NoSuchPort(base, known, fault), .othersMayTry = true};
  }
  const std::string lockdown(FirstLine(system.ReadText("/sys/kernel/security/lockdown")));
  return {.problem = port_messages::DirectAccessRefusedToRoot(base, known, lockdown),
          .othersMayTry = true};
}

}  // namespace

PortNote IoPortsAt(PortSystem& system, std::uint32_t base) {
  const int result = system.IoPerm(base, kRegisters, true);
  const bool answers = result >= 0 && !NothingAnswers(system, base);
  if (result >= 0) system.IoPerm(base, kRegisters, false);
  const PortFault fault = result < 0 ? PortFault{"ioperm", -result} : PortFault{};
  return {base, kDevice, answers ? std::string() : Refused(system, base, fault).problem};
}

TakenPort TakeIoPorts(PortSystem& system, const PortPlace& place) {
  const std::uint32_t base = place.use.base;
  const int result = system.IoPerm(base, kRegisters, true);
  if (result < 0) return Refused(system, base, {"ioperm", -result});
  if (NothingAnswers(system, base)) {
    system.IoPerm(base, kRegisters, false);
    return Refused(system, base, {});
  }
  return {.access = std::make_unique<IoPortsAccess>(system, base), .device = kDevice};
}
