#include "platform/linux/linux_parallel_port.h"

#include <string>
#include <utility>

#include "platform/linux/port_messages.h"

namespace {

constexpr std::uint32_t kData = 0;  // registers, relative to the base
constexpr std::uint32_t kControl = 2;

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

bool LinuxParallelPort::StillThere() {
  if (Usable() && access_->Gone()) {
    access_.reset();
    report_(port_messages::Gone(base_, device_));
  }
  return Usable();
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
  std::string problem;
  for (const PortWay take : kPortWays) {
    TakenPort taken = take(*system_, base_);
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
  report_(port_messages::AccessFailed(base_, device_, fault));
}

std::unique_ptr<PortIo> SystemParallelPort(Problem report) {
  return std::make_unique<LinuxParallelPort>(LinuxPortSystem(), std::move(report));
}
