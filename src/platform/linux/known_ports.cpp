#include "platform/linux/known_ports.h"

#include <charconv>

#include "platform/port_io.h"
#include "text/hex_text.h"

namespace {

constexpr const char* kFolder = "/proc/sys/dev/parport/";

std::string ProcFile(const KnownPort& port, const std::string& name) {
  return kFolder + port.name + "/" + name;
}

/// "888\t1912": the second number is the base of the ECP registers, not of a port. 0 when there is
/// no address.
std::uint32_t BaseOf(const std::string& text) {
  std::uint32_t base = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), base);
  return parsed.ec == std::errc() && base <= kLastIoPort ? base : 0;
}

}  // namespace

std::vector<KnownPort> KnownPorts(PortSystem& system) {
  std::vector<KnownPort> ports;
  for (const std::string& name : system.ListFolder(kFolder)) {
    KnownPort port{.name = name};
    port.base = BaseOf(system.ReadText(ProcFile(port, "base-addr")));
    if (port.base != 0) ports.push_back(port);  // "default" has none
  }
  return ports;
}

std::optional<std::string> HolderOf(PortSystem& system, const KnownPort& port) {
  const std::string holder(FirstLine(system.ReadText(ProcFile(port, "devices/active"))));
  if (holder.empty()) return std::nullopt;
  return holder == "none" ? std::string() : holder;
}

std::string WordOn(PortSystem& system, const KnownPort& port) {
  return system.ReadText(ProcFile(port, "base-addr")) +
         system.ReadText(ProcFile(port, "devices/active"));
}

std::string DriversOn(PortSystem& system, const KnownPort& port) {
  std::vector<std::string> drivers = system.ListFolder(ProcFile(port, "devices"));
  std::erase(drivers, "active");
  return Joined(drivers);
}
