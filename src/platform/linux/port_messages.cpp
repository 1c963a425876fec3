#include "platform/linux/port_messages.h"

#include <array>
#include <cerrno>

#include "platform/port_advice.h"
#include "text/hex_text.h"

namespace {

using port_messages::Hex;

using port_advice::kThenEnter;
using port_advice::kUntilThen;

// For a machine that is no PC.
constexpr const char* kLinesInstead =
    "Linux knows no parallel port on this machine. GPIO lines can take the place of one: the file "
    "GpioPort.csv beside the board table tells which, and under which address. ";

/// "/dev/parport0 (port 0x378)"
std::string Named(const std::string& device, std::uint32_t base) {
  return device + " (port " + Hex(base) + ")";
}
std::string Named(const KnownPort& port) { return Named(port.Node(), port.base); }

std::string ListOf(const std::vector<KnownPort>& known) {
  std::vector<std::string> list;
  list.reserve(known.size());
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

std::string DirectAccess(const Status& direct) {
  if (direct.Ok()) return "Direct access found nothing there: all three registers read 0xFF.";
  if (direct.Error() == EPERM) return "Direct access to the address is for root only.";
  return "Direct access failed as well (" + direct.Reason() + ").";
}

bool NoDriverBehindNode(int error) { return error == ENOENT || error == ENXIO || error == ENODEV; }

}  // namespace

namespace port_messages {

std::string Hex(std::uint32_t number) {
  return "0x" + PaddedHex(static_cast<std::int32_t>(number), 2);
}

std::string WithoutPort(const std::string& problem) {
  return problem + " " + kThenEnter + kUntilThen;
}

/// Each way ends with what makes it count: a group counts from the next log-in on.
std::string NoPermission(const std::string& node, const std::string& group,
                         const std::string& otherWay) {
  std::string text = "No permission to open " + node + ". ";
  if (!group.empty()) text += "It belongs to the group \"" + group + "\". ";
  text += "To get the permission, ";
  // Whoever is in group root may do far more than use this node.
  if (!group.empty() && group != "root") {
    text += "join the group and log in again:\n    sudo usermod -aG " + group + " $USER\nor ";
  }
  return text + otherWay;
}

std::string NoSuchPort(std::uint32_t base, const std::vector<KnownPort>& known,
                       const std::optional<Status>& direct) {
  const std::string none =
      "There is no parallel port at " + Hex(base) + ": no /dev/parportN has this address.";
  if (direct) return none + " " + DirectAccess(*direct) + "\n\n" + WhatExists(known) + kUntilThen;
  const std::string cure =
      known.empty() ? kLinesInstead + std::string(port_advice::kEnterThat) : WhatExists(known);
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

std::string NodeNotOpened(const KnownPort& port, const Status& opened, const Rights& rights) {
  if (NoDriverBehindNode(opened.Error())) {
    return Named(port) + " cannot be opened (" + opened.Reason() +
           "). The driver for it is not loaded:\n    sudo modprobe ppdev\n" + kThenEnter +
           kUntilThen;
  }
  if (opened.Error() != EACCES && opened.Error() != EPERM) {
    return Named(port) + " cannot be opened (" + opened.Reason() + ")." + kUntilThen;
  }
  if (rights.isRoot) {
    return Named(port) + " is refused even to root (" + opened.Reason() +
           "). A container, or kernel lockdown under Secure Boot, does so." + kUntilThen;
  }
  const std::string rule = "udev rule 70-isp-writer-ppdev.rules";
  const std::string byRule =
      rights.ruleInstalled ? "log in at the PC itself, not over the network: the installed " +
                                 rule + " gives the permission to nobody else."
                           : "install the " + rule + " that comes with this program. " + kThenEnter;
  return NoPermission(Named(port), rights.group, byRule) + kUntilThen;
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

std::string NotTaken(const KnownPort& port, const Status& taken) {
  return Named(port) + " was opened but could not be taken (" + taken.Reason() + ")." + kUntilThen;
}

std::string AccessFailed(std::uint32_t base, const std::string& device, const Status& access) {
  return Named(device, base) + " has failed (" + access.Reason() +
         "). What was written may not have reached the cable, and what is read does not come from "
         "a chip." +
         port_advice::kUntilEntered;
}

std::string Gone(std::uint32_t base, const std::string& device) {
  return Named(device, base) +
         " has gone: its card or adapter was pulled out, or its driver was unloaded or unbound. "
         "What was written last may not have reached the cable, and what was read last may not "
         "come from a chip.\n\nBring the port back. " +
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
