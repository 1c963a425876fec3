#include "platform/linux/linux_parallel_port.h"

#include <algorithm>
#include <cerrno>

#include "platform/linux/port_messages.h"

namespace {

constexpr std::uint32_t kData = 0;  // registers, relative to the base
constexpr std::uint32_t kControl = 2;
constexpr const char* kDirectAccess = "direct access";

}  // namespace

LinuxParallelPort::LinuxParallelPort(std::unique_ptr<PortSystem> system, Problem report)
    : system_(std::move(system)), report_(std::move(report)) {}

LinuxParallelPort::~LinuxParallelPort() { GiveBack(); }

void LinuxParallelPort::UsePort(std::uint32_t base) {
  GiveBack();
  base_ = base;
  failed_ = false;
  controlBitsTold_ = false;
  TakePort();
}

void LinuxParallelPort::DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) {
  if (!Usable()) return;
  if (port == base_ + kControl) return WriteControl(value);
  if (port == base_ + kData) NoteFault(access_->WriteData(value));
}

std::optional<std::uint8_t> LinuxParallelPort::DlPortReadPortUchar(std::uint32_t /*port*/) {
  std::uint8_t status = 0;  // the status register is the only one that is read
  if (Usable()) NoteFault(access_->ReadStatus(status));
  return Usable() ? std::optional(status) : std::nullopt;
}

void LinuxParallelPort::WriteControl(std::uint8_t value) {
  const std::uint8_t carried = access_->ControlBits();
  if ((value & ~carried) != 0 && !controlBitsTold_) {
    controlBitsTold_ = true;
    report_(port_messages::ControlBitsLost(base_, device_, value, carried));
  }
  NoteFault(access_->WriteControl(value));
}

void LinuxParallelPort::TakePort() {
  const auto known = KnownPorts(*system_);
  const auto port = std::find_if(known.begin(), known.end(),
                                 [this](const KnownPort& each) { return each.base == base_; });
  if (port == known.end()) {
    TakenPort direct = TakeIoPorts(*system_, base_);
    if (!Adopt(direct, kDirectAccess)) TellNoPort(known, direct);
    return;
  }
  TakenPort taken = TakePpdev(*system_, *port);
  if (Adopt(taken, port->Node())) return;
  if (taken.outcome == Taking::NotOpened) {
    // Only then: going past a driver that has the port would mix two masters' signals.
    TakenPort direct = TakeIoPorts(*system_, base_);
    if (Adopt(direct, kDirectAccess)) return;
  }
  TellNotTaken(*port, taken);
}

bool LinuxParallelPort::Adopt(TakenPort& taken, const std::string& device) {
  access_ = std::move(taken.access);
  device_ = device;
  return access_ != nullptr;
}

void LinuxParallelPort::GiveBack() {
  if (!access_) return;
  NoteFault(access_->GiveBack());
  access_.reset();
}

void LinuxParallelPort::NoteFault(PortFault fault) {
  if (!fault || failed_) return;
  failed_ = true;
  report_(port_messages::AccessFailed(base_, device_, fault));
}

void LinuxParallelPort::TellNotTaken(const KnownPort& port, const TakenPort& taken) {
  using namespace port_messages;
  switch (taken.outcome) {
    case Taking::Held:
      return report_(Held(port, taken.holder));
    case Taking::NotOpened:
      return report_(
          NodeNotOpened(port, taken.fault, system_->GroupOf(port.Node()), system_->IsRoot()));
    default:
      return report_(NotTaken(port, taken.fault));
  }
}

void LinuxParallelPort::TellNoPort(const std::vector<KnownPort>& known, const TakenPort& direct) {
  if (direct.fault.error == EPERM && system_->IsRoot()) {
    std::string lockdown = system_->ReadText("/sys/kernel/security/lockdown");
    lockdown = lockdown.substr(0, lockdown.find('\n'));
    return report_(port_messages::DirectAccessRefusedToRoot(base_, known, lockdown));
  }
  report_(port_messages::NoSuchPort(base_, known, direct.fault));
}

std::unique_ptr<PortIo> SystemParallelPort(Problem report) {
  return std::make_unique<LinuxParallelPort>(LinuxPortSystem(), std::move(report));
}
