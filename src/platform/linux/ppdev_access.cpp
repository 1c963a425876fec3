#include <linux/ppdev.h>
#include <sys/ioctl.h>
#include <sys/time.h>

#include <cerrno>

#include "platform/linux/port_access.h"

namespace {

/// The port's outputs in the control register. Bits 4 and 5 are the interrupt enable and the
/// direction of the data lines: ppdev drops the first and turns the lines round for the second.
constexpr std::uint8_t kControlOutputs = 0x0F;

class PpdevAccess final : public PortAccess {
 public:
  PpdevAccess(PortSystem& system, int descriptor) : system_(system), descriptor_(descriptor) {}
  ~PpdevAccess() override { GiveBack(); }
  PpdevAccess(const PpdevAccess&) = delete;
  PpdevAccess& operator=(const PpdevAccess&) = delete;

  /// With `exclusive` the claim never waits, and is refused with ENXIO when any other driver is
  /// registered on the port, be it idle. Without it the claim sleeps while the port is held.
  PortFault Claim(bool exclusive);
  /// Reads the registers that are put back later. Only a claimed port can be read.
  PortFault Save();

  PortFault WriteData(std::uint8_t value) override { return Call("PPWDATA", PPWDATA, &value); }
  PortFault WriteControl(std::uint8_t value) override {
    value &= kControlOutputs;
    return Call("PPWCONTROL", PPWCONTROL, &value);
  }
  PortFault ReadStatus(std::uint8_t& value) override {
    return Call("PPRSTATUS", PPRSTATUS, &value);
  }
  std::uint8_t ControlBits() const override { return kControlOutputs; }
  PortFault GiveBack() override;

 private:
  PortFault Call(const char* name, unsigned long request, std::uint8_t* byte = nullptr) {
    const int result = system_.Ioctl(descriptor_, request, byte);
    return result < 0 ? PortFault{name, -result} : PortFault{};
  }

  PortSystem& system_;
  int descriptor_;  // -1 when given back
  bool claimed_ = false;
  bool saved_ = false;
  std::uint8_t data_ = 0;
  std::uint8_t control_ = 0;
};

PortFault PpdevAccess::Claim(bool exclusive) {
  if (exclusive) {
    if (const PortFault fault = Call("PPEXCL", PPEXCL)) return fault;
  }
  const PortFault fault = Call("PPCLAIM", PPCLAIM);
  claimed_ = !fault;
  return fault;
}

PortFault PpdevAccess::Save() {
  if (const PortFault fault = Call("PPRDATA", PPRDATA, &data_)) return fault;
  if (const PortFault fault = Call("PPRCONTROL", PPRCONTROL, &control_)) return fault;
  saved_ = true;
  return {};
}

PortFault PpdevAccess::GiveBack() {
  if (descriptor_ < 0) return {};
  PortFault first;
  const auto keep = [&first](PortFault fault) {
    if (!first) first = fault;
  };
  if (saved_) {
    keep(WriteControl(control_));
    keep(WriteData(data_));
  }
  if (claimed_) keep(Call("PPRELEASE", PPRELEASE));
  system_.Close(descriptor_);
  descriptor_ = -1;
  return first;
}

TakenPort Refused(Taking outcome, PortFault fault, std::string holder = {}) {
  return {.outcome = outcome, .fault = fault, .holder = std::move(holder), .access = nullptr};
}

/// One attempt on a descriptor of its own: a descriptor on which PPEXCL was given keeps asking for
/// the port alone.
TakenPort TakeOnce(PortSystem& system, const KnownPort& port, bool exclusive) {
  const int descriptor = system.Open(port.Node());
  if (descriptor < 0) return Refused(Taking::NotOpened, {"open", -descriptor});
  auto access = std::make_unique<PpdevAccess>(system, descriptor);
  if (const PortFault fault = access->Claim(exclusive)) return Refused(Taking::Failed, fault);
  if (const PortFault fault = access->Save()) return Refused(Taking::Failed, fault);
  return {.outcome = Taking::Taken, .fault = {}, .holder = {}, .access = std::move(access)};
}

}  // namespace

TakenPort TakePpdev(PortSystem& system, const KnownPort& port) {
  if (auto holder = HolderOf(system, port); !holder.empty()) {
    return Refused(Taking::Held, {}, std::move(holder));
  }
  TakenPort taken = TakeOnce(system, port, true);
  if (taken.outcome != Taking::Failed || taken.fault.error != ENXIO) return taken;

  // Somebody else is registered; the shared claim would sleep if he has become active meanwhile.
  if (auto holder = HolderOf(system, port); !holder.empty()) {
    return Refused(Taking::Held, {}, std::move(holder));
  }
  taken = TakeOnce(system, port, false);
  if (taken.outcome != Taking::Failed || taken.fault.error != ENXIO) return taken;
  return Refused(Taking::Held, taken.fault,
                 DriversOn(system, port));  // one that shares with nobody
}
