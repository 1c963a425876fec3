#include <linux/ppdev.h>
#include <sys/ioctl.h>
#include <sys/time.h>

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

constexpr const char* kOpen = "open";
constexpr const char* kClaim = "PPCLAIM";

class PpdevAccess final : public PortAccess {
 public:
  PpdevAccess(PortSystem& system, KnownPort port, int descriptor)
      : system_(system), port_(std::move(port)), descriptor_(descriptor) {}
  ~PpdevAccess() override { GiveBack(); }
  PpdevAccess(const PpdevAccess&) = delete;
  PpdevAccess& operator=(const PpdevAccess&) = delete;

  /// With `exclusive` the claim never waits, and is refused with ENXIO when any other driver is
  /// registered on the port, be it idle. Without it the claim waits while the port is held, and
  /// ends with EINTR after two seconds.
  PortFault Claim(bool exclusive);
  /// Reads the registers that are put back later. Only a claimed port can be read.
  PortFault Save();

  PortFault Write(PortRegister which, std::uint8_t value) override {
    value &= Carried(which);
    if (which == PortRegister::Data) return Call("PPWDATA", PPWDATA, &value);
    return Call("PPWCONTROL", PPWCONTROL, &value);
  }
  PortFault ReadStatus(std::uint8_t& value) override {
    return Call("PPRSTATUS", PPRSTATUS, &value);
  }
  /// The driver answers for a port that has gone: writes succeed, and the status reads 0.
  bool Gone() const override { return WordOn(system_, port_) != word_; }
  std::uint8_t Carried(PortRegister which) const override {
    return which == PortRegister::Control ? kControlOutputs : 0xFF;
  }
  PortFault GiveBack() override;

 private:
  PortFault Call(const char* name, unsigned long request, std::uint8_t* byte = nullptr) {
    const int result = system_.Ioctl(descriptor_, request, byte);
    return result < 0 ? PortFault{name, -result} : PortFault{};
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

PortFault PpdevAccess::Claim(bool exclusive) {
  if (exclusive) {
    if (const PortFault fault = Call("PPEXCL", PPEXCL)) return fault;
  }
  const int result = system_.IoctlWithin(descriptor_, PPCLAIM, kLongestClaim_ms);
  claimed_ = result == 0;
  return claimed_ ? PortFault{} : PortFault{kClaim, -result};
}

PortFault PpdevAccess::Save() {
  if (const PortFault fault = Call("PPRDATA", PPRDATA, &data_)) return fault;
  if (const PortFault fault = Call("PPRCONTROL", PPRCONTROL, &control_)) return fault;
  saved_ = true;
  word_ = WordOn(system_, port_);
  return {};
}

PortFault PpdevAccess::GiveBack() {
  if (descriptor_ < 0) return {};
  PortFault first;
  const auto keep = [&first](PortFault fault) {
    if (!first) first = fault;
  };
  if (saved_) {
    keep(Write(PortRegister::Control, control_));
    keep(Write(PortRegister::Data, data_));
  }
  if (claimed_) keep(Call("PPRELEASE", PPRELEASE));
  system_.Close(descriptor_);
  descriptor_ = -1;
  return first;
}

struct Attempt {
  std::unique_ptr<PpdevAccess> access;  // null: `fault` says why
  PortFault fault;

  bool Failed(const char* call) const { return !access && fault.call == call; }
};

/// On a descriptor of its own: one on which PPEXCL was given keeps asking for the port alone.
Attempt TakeOnce(PortSystem& system, const KnownPort& port, bool exclusive) {
  const int descriptor = system.Open(port.Node());
  if (descriptor < 0) return {.access = nullptr, .fault = {kOpen, -descriptor}};
  auto access = std::make_unique<PpdevAccess>(system, port, descriptor);
  PortFault fault = access->Claim(exclusive);
  if (!fault) fault = access->Save();
  if (fault) access.reset();
  return {.access = std::move(access), .fault = fault};
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
    if (descriptor < 0) {
      note.problem =
          port_messages::NodeNotOpened(port, {kOpen, -descriptor}, RightsTo(system, port));
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
  const bool shared = holder && attempt.Failed(kClaim) && attempt.fault.error == ENXIO;
  if (shared) {
    // Somebody else is registered. The shared claim waits if he has become active meanwhile.
    const auto now = HolderOf(system, *port);
    if (now && !now->empty()) return held(*now);
    attempt = TakeOnce(system, *port, false);
  }
  if (attempt.access) return {.access = std::move(attempt.access), .device = port->Node()};

  const PortFault fault = attempt.fault;
  if (attempt.Failed(kOpen)) {
    return {.problem = port_messages::NodeNotOpened(*port, fault, RightsTo(system, *port)),
            .othersMayTry = true};
  }
  if (shared && attempt.Failed(kClaim) && fault.error == ENXIO) {
    return {.problem = port_messages::RegisteredAlone(*port, DriversOn(system, *port))};
  }
  if (attempt.Failed(kClaim) && (fault.error == ENXIO || fault.error == EINTR)) {
    return held(DriversOn(system, *port));
  }
  return {.problem = port_messages::NotTaken(*port, fault)};
}
