#include <linux/ppdev.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/linux/known_ports.h"
#include "platform/linux/port_access.h"
#include "platform/linux/port_messages.h"

namespace {

/// The port's outputs in the control register. Bits 4 and 5 are the interrupt enable and the
/// direction of the data lines: ppdev drops the first and turns the lines round for the second.
constexpr std::uint8_t kControlOutputs = 0x0F;

constexpr std::uint32_t kLongestClaim_ms = 2000;

class PpdevAccess final : public PortAccess {
 public:
  PpdevAccess(PortSystem& system, KnownPort port, int descriptor)
      : system_(system), port_(std::move(port)), descriptor_(descriptor) {}
  ~PpdevAccess() override { static_cast<void>(GiveBack()); }
  PpdevAccess(const PpdevAccess&) = delete;
  PpdevAccess& operator=(const PpdevAccess&) = delete;

  /// Claims the port, and reads the registers that are put back later. With `exclusive` it never
  /// waits, and is refused with ENXIO when any other driver is registered on the port, be it idle.
  /// Without it the claim waits while the port is held, and ends with EINTR after two seconds.
  Status Claim(bool exclusive);

  Status Write(PortRegister which, std::uint8_t value) override {
    value &= Carried(which);
    if (which == PortRegister::Data) return Call("PPWDATA", PPWDATA, &value);
    return Call("PPWCONTROL", PPWCONTROL, &value);
  }
  Result<std::uint8_t> ReadStatus() override {
    std::uint8_t status = 0;
    Status read = Call("PPRSTATUS", PPRSTATUS, &status);
    if (!read.Ok()) return read;
    return status;
  }
  /// The driver answers for a port that has gone: writes succeed, and the status reads 0.
  bool Gone() const override { return WordOn(system_, port_) != word_; }
  std::uint8_t Carried(PortRegister which) const override {
    return which == PortRegister::Control ? kControlOutputs : 0xFF;
  }
  Status GiveBack() override;

 private:
  Status Call(const char* name, unsigned long request, std::uint8_t* byte = nullptr) {
    return Status::OfCall(name, system_.Ioctl(descriptor_, request, byte));
  }

  PortSystem& system_;
  const KnownPort port_;
  std::string word_;  // the kernel's on the port, with us as its holder
  int descriptor_;    // -1 when given back
  bool claimed_ = false;
  bool saved_ = false;
  std::uint8_t data_ = 0;
  std::uint8_t control_ = 0;
};

Status PpdevAccess::Claim(bool exclusive) {
  Status step;
  if (exclusive) step = Call("PPEXCL", PPEXCL);
  if (!step.Ok()) return step;
  step = Status::OfCall("PPCLAIM", system_.IoctlWithin(descriptor_, PPCLAIM, kLongestClaim_ms));
  claimed_ = step.Ok();
  if (claimed_) step = Call("PPRDATA", PPRDATA, &data_);
  if (step.Ok()) step = Call("PPRCONTROL", PPRCONTROL, &control_);
  saved_ = step.Ok();
  if (saved_) word_ = WordOn(system_, port_);
  return step;
}

Status PpdevAccess::GiveBack() {
  if (descriptor_ < 0) return {};
  Status given;
  if (saved_) {
    given.Also(Write(PortRegister::Control, control_));
    given.Also(Write(PortRegister::Data, data_));
  }
  if (claimed_) given.Also(Call("PPRELEASE", PPRELEASE));
  system_.Close(descriptor_);
  descriptor_ = -1;
  return given;
}

struct Attempt {
  std::unique_ptr<PpdevAccess> access = {};  // null: one of the two has failed
  Status open = {};
  Status claim = {};
};

/// On a descriptor of its own: one on which PPEXCL was given keeps asking for the port alone.
Attempt TakeOnce(PortSystem& system, const KnownPort& port, bool exclusive) {
  const int descriptor = system.Open(port.Node());
  if (descriptor < 0) return {.open = Status::OfCall("open", descriptor)};
  auto access = std::make_unique<PpdevAccess>(system, port, descriptor);
  Status claim = access->Claim(exclusive);
  if (!claim.Ok()) access.reset();
  return {.access = std::move(access), .claim = std::move(claim)};
}

port_messages::Rights RightsTo(PortSystem& system, const KnownPort& port) {
  const auto stands = [&system](const char* folder) {
    return !system.ReadText(std::string(folder) + "70-isp-writer-ppdev.rules").empty();
  };
  return {.group = system.GroupOf(port.Node()),
          .isRoot = system.IsRoot(),
          .ruleInstalled = stands("/usr/lib/udev/rules.d/") || stands("/etc/udev/rules.d/")};
}

}  // namespace

std::vector<PortNote> PpdevPorts(PortSystem& system) {
  std::vector<PortNote> notes;
  for (const KnownPort& port : KnownPorts(system)) {
    PortNote note{port.base, port.Node(), {}};
    const auto holder = HolderOf(system, port);
    const int descriptor = system.Open(port.Node());
    if (descriptor >= 0) system.Close(descriptor);
    const Status opened = Status::OfCall("open", descriptor);
    if (!opened.Ok()) {
      note.problem = port_messages::NodeNotOpened(port, opened, RightsTo(system, port));
    } else if (holder && !holder->empty()) {
      note.problem = port_messages::Held(port, *holder);
    }
    notes.push_back(std::move(note));
  }
  return notes;
}

TakenPort TakePpdev(PortSystem& system, const PortPlace& place) {
  const auto known = KnownPorts(system);
  const auto port = std::find_if(known.begin(), known.end(), [&](const KnownPort& each) {
    return each.base == place.use.base;
  });
  if (port == known.end()) return {.othersMayTry = true};
  const auto held = [&port](const std::string& by) {
    return TakenPort{.problem = port_messages::Held(*port, by)};
  };
  const auto holder = HolderOf(system, *port);
  if (holder && !holder->empty()) return held(*holder);

  Attempt attempt = TakeOnce(system, *port, true);
  // Not where the kernel does not say who has the port: a shared claim might wait for him.
  const bool shared = holder && attempt.claim.Error() == ENXIO;
  if (shared) {
    // Somebody else is registered. The shared claim waits if he has become active meanwhile.
    const auto now = HolderOf(system, *port);
    if (now && !now->empty()) return held(*now);
    attempt = TakeOnce(system, *port, false);
  }
  if (attempt.access) return {.access = std::move(attempt.access), .device = port->Node()};

  if (!attempt.open.Ok()) {
    return {.problem = port_messages::NodeNotOpened(*port, attempt.open, RightsTo(system, *port)),
            .othersMayTry = true};
  }
  const int error = attempt.claim.Error();
  if (shared && error == ENXIO) {
    return {.problem = port_messages::RegisteredAlone(*port, DriversOn(system, *port))};
  }
  if (error == ENXIO || error == EINTR) return held(DriversOn(system, *port));
  return {.problem = port_messages::NotTaken(*port, attempt.claim)};
}
