#include "platform/linux/gpio_chip.h"

#include <linux/gpio.h>

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

Status GpioLine::Configure(LineSetting setting) {
  gpio_v2_line_config config = ConfigOf(setting);
  return descriptor_.Call("GPIO_V2_LINE_SET_CONFIG_IOCTL", GPIO_V2_LINE_SET_CONFIG_IOCTL, &config);
}

Status GpioLine::Set(bool high) {
  gpio_v2_line_values values{.bits = high ? kTheLine : 0, .mask = kTheLine};
  return descriptor_.Call("GPIO_V2_LINE_SET_VALUES_IOCTL", GPIO_V2_LINE_SET_VALUES_IOCTL, &values);
}

Result<bool> GpioLine::Get() const {
  gpio_v2_line_values values{.bits = 0, .mask = kTheLine};
  Status got =
      descriptor_.Call("GPIO_V2_LINE_GET_VALUES_IOCTL", GPIO_V2_LINE_GET_VALUES_IOCTL, &values);
  if (!got.Ok()) return got;
  return (values.bits & kTheLine) != 0;
}

Result<std::unique_ptr<GpioChip>> GpioChip::Open(PortSystem& system, const std::string& node) {
  const int descriptor = system.Open(node);
  if (descriptor < 0) return Status::OfCall("open", descriptor);
  std::unique_ptr<GpioChip> chip(new GpioChip(system, node, descriptor));
  gpiochip_info info{};
  Status asked = chip->descriptor_.Call("GPIO_GET_CHIPINFO_IOCTL", GPIO_GET_CHIPINFO_IOCTL, &info);
  if (!asked.Ok()) return asked;
  chip->name = CutAtNul({info.name, sizeof info.name});
  chip->label = CutAtNul({info.label, sizeof info.label});
  chip->lines = info.lines;
  return chip;
}

std::string GpioChip::Text() const {
  return node + " (" + label + ", " + std::to_string(lines) + " lines)";
}

Result<GpioChip::LineInfo> GpioChip::Look(std::uint32_t line) const {
  gpio_v2_line_info found{};
  found.offset = line;
  Status asked = descriptor_.Call("GPIO_V2_GET_LINEINFO_IOCTL", GPIO_V2_GET_LINEINFO_IOCTL, &found);
  if (!asked.Ok()) return asked;
  return LineInfo{.name = std::string(CutAtNul({found.name, sizeof found.name})),
                  .consumer = std::string(CutAtNul({found.consumer, sizeof found.consumer})),
                  .used = (found.flags & GPIO_V2_LINE_FLAG_USED) != 0};
}

Result<GpioLine> GpioChip::Request(std::uint32_t line, LineSetting setting) const {
  gpio_v2_line_request request{};
  request.offsets[0] = line;
  request.num_lines = 1;
  std::copy(kConsumer.begin(), kConsumer.end(), request.consumer);
  request.config = ConfigOf(setting);
  Status taken = descriptor_.Call("GPIO_V2_GET_LINE_IOCTL", GPIO_V2_GET_LINE_IOCTL, &request);
  if (!taken.Ok()) return taken;
  return GpioLine(Descriptor(system_, request.fd));
}

std::vector<std::string> GpioNodes(PortSystem& system) {
  std::vector<std::string> nodes;
  for (const std::string& name : system.ListFolder("/dev")) {
    if (name.starts_with("gpiochip")) nodes.push_back("/dev/" + name);
  }
  return nodes;
}
