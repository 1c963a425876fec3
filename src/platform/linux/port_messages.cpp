#include "platform/linux/port_messages.h"

#include <array>
#include <cerrno>

#include "platform/port_advice.h"
#include "platform/problem.h"
#include "text/hex_text.h"

namespace {

using port_messages::Hex;
using port_messages::Reason;
using port_messages::Rights;

using port_advice::kThenEnter;
using port_advice::kUntilThen;

// For a machine that is no PC.
constexpr const char* kLinesInstead =
    "Linux knows no parallel port on this machine. GPIO lines can take the place of one: the file "
    "GpioPort.csv beside the board table tells which, and under which address. Enter that address "
    "in the Setting window.";

/// "/dev/parport0 (port 0x378)"
std::string Named(const std::string& device, std::uint32_t base) {
  return device + " (port " + Hex(base) + ")";
}
std::string Named(const KnownPort& port) { return Named(port.Node(), port.base); }

std::string ListOf(const std::vector<KnownPort>& known) {
  std::vector<std::string> list;
  for (const KnownPort& port : known) list.push_back(Hex(port.base) + " (" + port.Node() + ")");
  return Joined(list);
}

std::string WhatExists(const std::vector<KnownPort>& known) {
  if (!known.empty()) {
    return "These ports exist: " + ListOf(known) + ". " + port_advice::kEnterOne;
  }
  return "Linux knows no parallel port on this PC. If there is one, load its drivers:\n"
         "    sudo modprobe -a parport_pc ppdev\n" +
         std::string(kThenEnter);
}

std::string DirectAccess(PortFault direct) {
  if (!direct) return "Direct access found nothing there: all three registers read 0xFF.";
  if (direct.error == EPERM) return "Direct access to the address is for root only.";
  return "Direct access failed as well (" + Reason(direct) + ").";
}

bool IsRefusal(PortFault fault) { return fault.error == EACCES || fault.error == EPERM; }

bool NoDriverBehindNode(PortFault fault) {
  return fault.error == ENOENT || fault.error == ENXIO || fault.error == ENODEV;
}

/// Each way ends with what makes it count: a group counts from the next log-in on.
std::string HowToGetIt(const Rights& rights) {
  const std::string rule = "udev rule 70-isp-writer-ppdev.rules";
  const std::string byRule =
      rights.ruleInstalled ? "log in at the PC itself, not over the network: the installed " +
                                 rule + " gives the permission to nobody else."
                           : "install the " + rule + " that comes with this program. " + kThenEnter;
  const std::string toGetIt = "To get the permission, ";
  if (rights.group.empty()) return toGetIt + byRule;
  const std::string owner = "It belongs to the group \"" + rights.group + "\". " + toGetIt;
  // Whoever is in group root may do far more than use this port.
  if (rights.group == "root") return owner + byRule;
  return owner + "join the group and log in again:\n    sudo usermod -aG " + rights.group +
         " $USER\nor " + byRule;
}

}  // namespace

namespace port_messages {

std::string Hex(std::uint32_t number) {
  return "0x" + PaddedHex(static_cast<std::int32_t>(number), 2);
}

std::string Reason(PortFault fault) {
  return std::string(fault.call) + ": " + ErrorText(fault.error);
}

std::string WithoutPort(const std::string& problem) {
  return problem + " " + kThenEnter + kUntilThen;
}

std::string NoSuchPort(std::uint32_t base, const std::vector<KnownPort>& known,
                       std::optional<PortFault> direct) {
  const std::string none =
      "There is no parallel port at " + Hex(base) + ": no /dev/parportN has this address.";
  if (direct) return none + " " + DirectAccess(*direct) + "\n\n" + WhatExists(known) + kUntilThen;
  const std::string cure = known.empty() ? kLinesInstead : WhatExists(known);
  return none + "\n\n" + cure + kUntilThen;
}

std::string DirectAccessRefusedToRoot(std::uint32_t base, const std::vector<KnownPort>& known,
                                      const std::string& lockdown) {
  const std::string word =
      lockdown.empty() ? "" : " (/sys/kernel/security/lockdown says: " + lockdown + ")";
  return "No /dev/parportN has the address " + Hex(base) +
         ", and Linux refuses direct access to it even to root. It does so in kernel lockdown, "
         "which Secure Boot turns on, and in a container" +
         word + ".\n\nA port at /dev/parportN works all the same. " + WhatExists(known) +
         kUntilThen;
}

std::string NodeNotOpened(const KnownPort& port, PortFault fault, const Rights& rights) {
  if (NoDriverBehindNode(fault)) {
    return Named(port) + " cannot be opened (" + Reason(fault) +
           "). The driver for it is not loaded:\n    sudo modprobe ppdev\n" + kThenEnter +
           kUntilThen;
  }
  if (IsRefusal(fault) && rights.isRoot) {
    return Named(port) + " is refused even to root (" + Reason(fault) +
           "). A container, or kernel lockdown under Secure Boot, does so." + kUntilThen;
  }
  if (IsRefusal(fault)) {
    return "No permission to open " + Named(port) + ". " + HowToGetIt(rights) + kUntilThen;
  }
  return Named(port) + " cannot be opened (" + Reason(fault) + ")." + kUntilThen;
}

std::string Held(const KnownPort& port, const std::string& holder) {
  return Named(port) + " is held by another driver: " + (holder.empty() ? "unknown" : holder) +
         ". Stop the program that uses it, or unload that driver. " + kThenEnter + kUntilThen;
}

std::string RegisteredAlone(const KnownPort& port, const std::string& owner) {
  return Named(port) + " is free, but a driver has registered as its only one: " +
         (owner.empty() ? "unknown" : owner) +
         ". End the program that opened the port so, or unload that driver. " + kThenEnter +
         kUntilThen;
}

std::string NotTaken(const KnownPort& port, PortFault fault) {
  return Named(port) + " was opened but could not be taken (" + Reason(fault) + ")." + kUntilThen;
}

std::string AccessFailed(std::uint32_t base, const std::string& device, PortFault fault) {
  return Named(device, base) + " has failed (" + Reason(fault) +
         "). What was written may not have reached the cable, and what is read does not come from "
         "a chip." +
         port_advice::kUntilEntered;
}

std::string Gone(std::uint32_t base, const std::string& device) {
  return Named(device, base) +
         " has gone: its card or adapter was pulled out, or its driver was unloaded or unbound. "
         "What was "
         "written last may not have reached the cable, and what was read last may not come from a "
         "chip.\n\nBring the port back. " +
         kThenEnter + port_advice::kWithoutPort;
}

std::string BitsLost(std::uint32_t base, const std::string& device, PortRegister which,
                     std::uint8_t value, std::uint8_t carried) {
  struct Line {
    const char *use, *registerName, *verb, *mask;
  };
  constexpr std::array<Line, 3> kLines{{{"drives SDA", "data", "write", "SDA out"},
                                        {"samples SDA", "status", "read", "SDA in"},
                                        {"drives SCL", "control", "write", "SCL"}}};
  const Line& line = kLines.at(static_cast<std::size_t>(which));
  return std::string("The board in use ") + line.use + " by a bit of the " + line.registerName +
         " register that has no pin: " + Named(device, base) + " was to " + line.verb + " " +
         Hex(value) + " and carries only the bits " + Hex(carried) + ". Choose a board whose " +
         line.mask + " mask lies within " + Hex(carried) + ".";
}

}  // namespace port_messages
