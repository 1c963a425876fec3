// The parallel ports that the kernel's own driver has found, as /proc/sys/dev/parport shows them.
// Reads only; never opens a device.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/port_system.h"

struct KnownPort {
  std::string name;        // "parport0"
  std::uint32_t base = 0;  // I/O address of the data register, 1..0xFFFF

  std::string Node() const { return "/dev/" + name; }
};

/// In the order of their names. Ports without an I/O address (USB adapters) are left out.
std::vector<KnownPort> KnownPorts(PortSystem& system);

/// The driver that holds the port at this moment; empty when nobody does, nothing when the kernel
/// does not say.
std::optional<std::string> HolderOf(PortSystem& system, const KnownPort& port);

/// What the kernel says of the port: its addresses and its holder. It changes for whoever has taken
/// the port when the port goes, also when another one comes in its place. Empty when it has gone.
std::string WordOn(PortSystem& system, const KnownPort& port);

/// The drivers that are registered on the port, holding it or idle, joined by ", "; may be empty.
std::string DriversOn(PortSystem& system, const KnownPort& port);
