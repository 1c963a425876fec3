#include "platform/linux/linux_parallel_port.h"

#include <string>
#include <utility>

#include "platform/linux/known_ports.h"
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
  NoteFailure(access_->Write(which, value));
}

std::optional<std::uint8_t> LinuxParallelPort::DlPortReadPortUchar(std::uint32_t /*port*/) {
  // What a bit without a pin reads could be an acknowledge.
  if (!Usable() || Lost(PortRegister::Status, place_.use.sampled) != 0) return std::nullopt;
  const auto status = access_->ReadStatus();  // the only register that is read
  NoteFailure(status);
  return status.Ok() ? std::optional(*status) : std::nullopt;
}

int LinuxParallelPort::Lost(PortRegister which, std::uint8_t value) const {
  return (value ^ AtRest(which)) & ~access_->Carried(which);
}

void LinuxParallelPort::NoteLost(PortRegister which, std::uint8_t value) {
  if (Lost(which, value) == 0 || std::exchange(lostTold_, true)) return;
  report_(port_messages::BitsLost(place_.use.base, device_, which, value, access_->Carried(which)));
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
  if (problem.empty()) {
    problem = port_messages::NoSuchPort(place_.use.base, KnownPorts(*system_), std::nullopt);
  }
  report_(problem);
}

void LinuxParallelPort::GiveBack() {
  if (!access_) return;
  NoteFailure(access_->GiveBack());
  access_.reset();
}

void LinuxParallelPort::NoteFailure(const Status& access) {
  if (access.Ok() || failed_) return;
  failed_ = true;
  const std::string words = access_->Words(place_.use.base, device_, access);
  report_(words.empty() ? port_messages::AccessFailed(place_.use.base, device_, access) : words);
}

std::unique_ptr<PortIo> SystemParallelPort(const std::filesystem::path& boardFolder,
                                           Problem report) {
  return std::make_unique<LinuxParallelPort>(LinuxPortSystem(), boardFolder, std::move(report));
}
