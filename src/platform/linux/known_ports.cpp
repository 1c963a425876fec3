#include "platform/linux/known_ports.h"

#include <charconv>
#include <string_view>

namespace {

constexpr std::string_view kFolder = "/proc/sys/dev/parport/";
constexpr std::uint32_t kLastIoPort = 0xFFFF;

std::string PathOf(const KnownPort& port, std::string_view file) {
  return std::string(kFolder) + port.name + "/" + std::string(file);
}

std::string FirstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

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
  for (const std::string& name : system.ListFolder(std::string(kFolder))) {
    KnownPort port{.name = name};
    port.base = BaseOf(system.ReadText(PathOf(port, "base-addr")));
    if (port.base != 0) ports.push_back(port);  // "default" has none
  }
  return ports;
}

std::optional<std::string> HolderOf(PortSystem& system, const KnownPort& port) {
  const std::string holder = FirstLine(system.ReadText(PathOf(port, "devices/active")));
  if (holder.empty()) return std::nullopt;
  return holder == "none" ? std::string() : holder;
}

std::string WordOn(PortSystem& system, const KnownPort& port) {
  return system.ReadText(PathOf(port, "base-addr")) +
         system.ReadText(PathOf(port, "devices/active"));
}

std::string DriversOn(PortSystem& system, const KnownPort& port) {
  std::string drivers;
  for (const std::string& name : system.ListFolder(PathOf(port, "devices"))) {
    if (name == "active") continue;
    drivers += (drivers.empty() ? "" : ", ") + name;
  }
  return drivers;
}
