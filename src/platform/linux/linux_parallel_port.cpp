#include "platform/linux/linux_parallel_port.h"

#include <string>
#include <utility>

#include "platform/linux/port_messages.h"

namespace {

/// What the bits of a register hold that carry no line. Nothing is lost when they are not carried.
std::uint8_t AtRest(PortRegister which) { return which == PortRegister::Data ? 0x7F : 0; }

}  // namespace

LinuxParallelPort::LinuxParallelPort(std::unique_ptr<PortSystem> system,
                                     std::filesystem::path boardFolder, Problem report,
                                     std::span<const PortWay> ways)
    : system_(std::move(system)),
      report_(std::move(report)),
      ways_(ways),
      place_{.folder = std::move(boardFolder)} {}

LinuxParallelPort::~LinuxParallelPort() { GiveBack(); }

void LinuxParallelPort::UsePort(const PortUse& use) {
  GiveBack();
  place_.use = use;
  failed_ = false;
  lostTold_ = false;
  TakePort();
  if (Usable()) NoteLost(PortRegister::Status, use.sampled);
}

bool LinuxParallelPort::StillThere() {
  if (Usable() && access_->Gone()) {
    access_.reset();
    report_(port_messages::Gone(place_.use.base, device_));
  }
  return Usable();
}

void LinuxParallelPort::DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) {
  const auto which = static_cast<PortRegister>(port - place_.use.base);
  const bool isWritten = which == PortRegister::Data || which == PortRegister::Control;
  if (!Usable() || !isWritten) return;
  NoteLost(which, value);
  NoteFault(access_->Write(which, value));
}

std::optional<std::uint8_t> LinuxParallelPort::DlPortReadPortUchar(std::uint32_t /*port*/) {
  std::uint8_t status = 0;  // the status register is the only one that is read
  if (Usable()) NoteFault(access_->ReadStatus(status));
  return Usable() ? std::optional(status) : std::nullopt;
}

void LinuxParallelPort::NoteLost(PortRegister which, std::uint8_t value) {
  const std::uint8_t carried = access_->Carried(which);
  const int lost = (value ^ AtRest(which)) & ~carried;
  if (lost == 0 || std::exchange(lostTold_, true)) return;
  report_(port_messages::BitsLost(place_.use.base, device_, which, value, carried));
}

void LinuxParallelPort::TakePort() {
  std::string problem;
  for (const PortWay take : ways_) {
    TakenPort taken = take(*system_, place_);
    access_ = std::move(taken.access);
    device_ = taken.device;
    if (access_) return;
    if (problem.empty()) problem = taken.problem;  // of the first way that knows such a port
    if (!taken.othersMayTry) break;
  }
  report_(problem);
}

void LinuxParallelPort::GiveBack() {
  if (!access_) return;
  NoteFault(access_->GiveBack());
  access_.reset();
}

void LinuxParallelPort::NoteFault(PortFault fault) {
  if (!fault || failed_) return;
  failed_ = true;
  report_(port_messages::AccessFailed(place_.use.base, device_, fault));
}

std::unique_ptr<PortIo> SystemParallelPort(const std::filesystem::path& boardFolder,
                                           Problem report) {
  return std::make_unique<LinuxParallelPort>(LinuxPortSystem(), boardFolder, std::move(report));
}
