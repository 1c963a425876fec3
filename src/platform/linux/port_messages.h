// What the operator is told when the parallel port cannot be used: what was tried, why it failed
// and what helps. Texts only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/known_ports.h"
#include "platform/linux/port_access.h"

namespace port_messages {

/// "0x378"
std::string Hex(std::uint32_t number);
/// Why there is no port, with how to try again and what holds until then.
std::string WithoutPort(const std::string& problem);
/// A node that could not be opened, and what helps. `group`: the node's; empty when it is not
/// known. `otherWay`: to get the permission without joining that group.
std::string NoPermission(const std::string& node, const std::string& group,
                         const std::string& otherWay);

/// The kernel knows no port at `base`, and direct access failed with `direct`, or found nothing
/// there when `direct` is `Ok`; nothing where there is no such way.
std::string NoSuchPort(std::uint32_t base, const std::vector<KnownPort>& known,
                       const std::optional<Status>& direct);

/// Direct access was refused although the program runs as root. `lockdown`: the kernel's own word
/// on its lockdown, empty when it has none.
std::string DirectAccessRefusedToRoot(std::uint32_t base, const std::vector<KnownPort>& known,
                                      const std::string& lockdown);

/// What decides who may open a node.
struct Rights {
  std::string group;  // the node's; empty when it is not known
  bool isRoot = false;
  bool ruleInstalled = false;  // the udev rule for whoever sits at the PC
};

/// The node of a port that the kernel knows could not be opened.
std::string NodeNotOpened(const KnownPort& port, const Status& opened, const Rights& rights);

/// `holder`: the drivers that have it; may be empty.
std::string Held(const KnownPort& port, const std::string& holder);

/// Nobody holds it, but `owner` is registered on it as its only driver; may be empty.
std::string RegisteredAlone(const KnownPort& port, const std::string& owner);

/// A call failed while the port was being taken.
std::string NotTaken(const KnownPort& port, const Status& taken);

/// A call failed on a port that had been taken. `device`: the node, or the way it is reached.
std::string AccessFailed(std::uint32_t base, const std::string& device, const Status& access);

/// The kernel has lost a port that had been taken.
std::string Gone(std::uint32_t base, const std::string& device);

/// The board in use has its line of that register outside `carried`, the bits that reach the port.
/// `value`: what was to be written, or the bits that are sampled.
std::string BitsLost(std::uint32_t base, const std::string& device, PortRegister which,
                     std::uint8_t value, std::uint8_t carried);

}  // namespace port_messages
