#include <algorithm>

#include "platform/linux/gpio_access.h"
#include "platform/linux/port_access.h"

std::vector<PortNote> SystemPorts(const std::filesystem::path& boardFolder, std::uint32_t base) {
  const auto system = LinuxPortSystem();
  std::vector<PortNote> ports = PpdevPorts(*system);
  for (PortNote& port : GpioPorts(*system, boardFolder)) ports.push_back(std::move(port));
  const bool direct =
      std::ranges::any_of(kPortWays, [](PortWay way) { return way == TakeIoPorts; });
  const bool listed = std::ranges::find(ports, base, &PortNote::base) != ports.end();
  if (direct && !listed) ports.push_back(IoPortsAt(*system, base));
  return ports;
}
