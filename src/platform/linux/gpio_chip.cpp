#include "platform/linux/gpio_chip.h"

#include <linux/gpio.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <string_view>

#include "text/hex_text.h"

namespace {

constexpr std::string_view kConsumer = "isp-writer";
constexpr std::uint64_t kTheLine = 1;  // a request of one line has it at bit 0

gpio_v2_line_config ConfigOf(LineSetting setting) {
  gpio_v2_line_config config{};
  if (!setting.output) {
    config.flags = GPIO_V2_LINE_FLAG_INPUT | (setting.high ? GPIO_V2_LINE_FLAG_BIAS_PULL_UP
                                                           : GPIO_V2_LINE_FLAG_BIAS_PULL_DOWN);
    return config;
  }
  config.flags = GPIO_V2_LINE_FLAG_OUTPUT;
  if (!setting.high) return config;  // outputs are low unless an attribute says otherwise
  config.num_attrs = 1;
  config.attrs[0].mask = kTheLine;
  config.attrs[0].attr.id = GPIO_V2_LINE_ATTR_ID_OUTPUT_VALUES;
  config.attrs[0].attr.values = kTheLine;
  return config;
}

}  // namespace

PortFault GpioLine::Configure(LineSetting setting) {
  gpio_v2_line_config config = ConfigOf(setting);
  return descriptor_.Call("GPIO_V2_LINE_SET_CONFIG_IOCTL", GPIO_V2_LINE_SET_CONFIG_IOCTL, &config);
}

PortFault GpioLine::Set(bool high) {
  gpio_v2_line_values values{.bits = high ? kTheLine : 0, .mask = kTheLine};
  return descriptor_.Call("GPIO_V2_LINE_SET_VALUES_IOCTL", GPIO_V2_LINE_SET_VALUES_IOCTL, &values);
}

PortFault GpioLine::Get(bool& high) const {
  gpio_v2_line_values values{.bits = 0, .mask = kTheLine};
  const PortFault fault =
      descriptor_.Call("GPIO_V2_LINE_GET_VALUES_IOCTL", GPIO_V2_LINE_GET_VALUES_IOCTL, &values);
  if (!fault) high = (values.bits & kTheLine) != 0;
  return fault;
}

GpioChip::Opened GpioChip::Open(PortSystem& system, const std::string& node) {
  const int descriptor = system.Open(node);
  if (descriptor < 0) return {.fault = {"open", -descriptor}};
  std::unique_ptr<GpioChip> chip(new GpioChip(system, node, descriptor));
  gpiochip_info info{};
  const PortFault fault =
      chip->descriptor_.Call("GPIO_GET_CHIPINFO_IOCTL", GPIO_GET_CHIPINFO_IOCTL, &info);
  if (fault) return {.fault = fault};
  chip->name = CutAtNul({info.name, sizeof info.name});
  chip->label = CutAtNul({info.label, sizeof info.label});
  chip->lines = info.lines;
  return {.chip = std::move(chip)};
}

std::string GpioChip::Text() const {
  return node + " (" + label + ", " + std::to_string(lines) + " lines)";
}

PortFault GpioChip::Look(std::uint32_t line, LineInfo& info) const {
  gpio_v2_line_info found{};
  found.offset = line;
  const PortFault fault =
      descriptor_.Call("GPIO_V2_GET_LINEINFO_IOCTL", GPIO_V2_GET_LINEINFO_IOCTL, &found);
  if (fault) return fault;
  info = {.name = std::string(CutAtNul({found.name, sizeof found.name})),
          .consumer = std::string(CutAtNul({found.consumer, sizeof found.consumer})),
          .used = (found.flags & GPIO_V2_LINE_FLAG_USED) != 0};
  return {};
}

PortFault GpioChip::Request(std::uint32_t line, LineSetting setting,
                            std::optional<GpioLine>& taken) const {
  gpio_v2_line_request request{};
  request.offsets[0] = line;
  request.num_lines = 1;
  std::copy(kConsumer.begin(), kConsumer.end(), request.consumer);
  request.config = ConfigOf(setting);
  const PortFault fault =
      descriptor_.Call("GPIO_V2_GET_LINE_IOCTL", GPIO_V2_GET_LINE_IOCTL, &request);
  if (!fault) taken.emplace(Descriptor(system_, request.fd));
  return fault;
}

std::vector<std::string> GpioNodes(PortSystem& system) {
  std::vector<std::string> nodes;
  for (const std::string& name : system.ListFolder("/dev")) {
    if (name.starts_with("gpiochip")) nodes.push_back("/dev/" + name);
  }
  return nodes;
}
