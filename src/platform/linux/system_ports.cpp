#include "platform/linux/gpio_access.h"
#include "platform/linux/port_access.h"

std::vector<PortNote> SystemPorts(const std::filesystem::path& boardFolder) {
  const auto system = LinuxPortSystem();
  std::vector<PortNote> ports = PpdevPorts(*system);
  for (PortNote& port : GpioPorts(*system, boardFolder)) ports.push_back(std::move(port));
  return ports;
}
