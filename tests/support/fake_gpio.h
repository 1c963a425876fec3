// GPIO chips as the kernel's character device (interface v2) shows them. They hold to the real
// one's rules: a line belongs to one request, a value is set on outputs only, a closed line stays
// as it was, and all calls on the lines of a chip that has gone fail.
#pragma once

#include <linux/gpio.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

struct FakeGpioLine {
  std::string name = {};
  std::string consumer = {};  // of whoever has it; may be empty
  bool used = false;
  std::string racer = {};  // takes the line just before it is requested; empty: nobody
  bool inputOnly = false;  // not turned to an output
  bool pulledLow = false;  // from outside
  bool output = false;     // its direction
  bool high = false;       // as an output drives it, or as an input is pulled

  bool Level() const { return high && !pulledLow; }
};

struct FakeGpioChip {
  std::string node;
  std::string name;  // the kernel's
  std::string label;
  std::vector<FakeGpioLine> lines = {};
  int refused = 0;  // errno of its opening
  bool gone = false;
};

struct FakeGpio {
  std::vector<FakeGpioChip> chips;
  /// Records a call; minus errno when it has to fail.
  std::function<int(const std::string& name, const std::string& arguments)> call;
  std::function<void()> moved = [] {};  // told when a line was taken or changed
  std::string requested;                // the lines, in order

  FakeGpioLine& Line(std::size_t number) { return chips.at(0).lines.at(number); }
  bool Has(int descriptor) const { return open_.contains(descriptor); }
  std::size_t OpenDescriptors() const { return open_.size(); }

  int Open(const std::string& node) {
    const auto chip = std::ranges::find(chips, node, &FakeGpioChip::node);
    if (const int failed = call("open", ":" + node)) return failed;
    if (chip == chips.end()) return -ENOENT;
    if (chip->refused != 0) return -chip->refused;
    return Add({static_cast<std::size_t>(chip - chips.begin()), -1});
  }
  void Close(int descriptor) {
    const Opened opened = open_.at(descriptor);
    open_.erase(descriptor);
    call("close", opened.line < 0 ? "" : ":" + std::to_string(opened.line));
    if (opened.line >= 0) Use(LineOf(opened), {}, false);
  }

  int Ioctl(int descriptor, unsigned long request, void* carried) {
    const Opened opened = open_.at(descriptor);
    switch (request) {
      case GPIO_GET_CHIPINFO_IOCTL:
        return ChipInfo(opened, *static_cast<gpiochip_info*>(carried));
      case GPIO_V2_GET_LINEINFO_IOCTL:
        return LineInfo(opened, *static_cast<gpio_v2_line_info*>(carried));
      case GPIO_V2_GET_LINE_IOCTL:
        return Request(opened, *static_cast<gpio_v2_line_request*>(carried));
      case GPIO_V2_LINE_SET_CONFIG_IOCTL:
        return Configure("config", opened, *static_cast<gpio_v2_line_config*>(carried));
      case GPIO_V2_LINE_SET_VALUES_IOCTL:
        return Set(opened, *static_cast<gpio_v2_line_values*>(carried));
      case GPIO_V2_LINE_GET_VALUES_IOCTL:
        return Get(opened, *static_cast<gpio_v2_line_values*>(carried));
      default:
        throw std::logic_error("a request that a GPIO chip does not know");
    }
  }

 private:
  struct Opened {
    std::size_t chip;
    int line;  // -1: the chip itself
  };

  FakeGpioLine& LineOf(Opened opened) {
    return chips[opened.chip].lines.at(static_cast<std::size_t>(opened.line));
  }
  int Add(Opened opened) {
    open_[++last_] = opened;
    return last_;
  }
  static void Use(FakeGpioLine& line, const std::string& consumer, bool used) {
    line.consumer = consumer;
    line.used = used;
  }

  int ChipInfo(Opened opened, gpiochip_info& info) {
    const FakeGpioChip& chip = chips[opened.chip];
    if (const int failed = call("chipinfo", "")) return failed;
    std::strncpy(info.name, chip.name.c_str(), sizeof info.name - 1);
    std::strncpy(info.label, chip.label.c_str(), sizeof info.label - 1);
    info.lines = static_cast<std::uint32_t>(chip.lines.size());
    return 0;
  }
  int LineInfo(Opened opened, gpio_v2_line_info& info) {
    const FakeGpioLine& line = chips[opened.chip].lines.at(info.offset);
    if (const int failed = call("lineinfo", ":" + std::to_string(info.offset))) return failed;
    std::strncpy(info.name, line.name.c_str(), sizeof info.name - 1);
    std::strncpy(info.consumer, line.consumer.c_str(), sizeof info.consumer - 1);
    info.flags = line.used ? GPIO_V2_LINE_FLAG_USED : 0;
    return 0;
  }
  int Request(Opened opened, gpio_v2_line_request& request) {
    if (request.num_lines != 1) throw std::logic_error("a line was not requested alone");
    opened.line = static_cast<int>(request.offsets[0]);
    FakeGpioLine& line = LineOf(opened);
    if (!line.racer.empty()) Use(line, line.racer, true);
    if (line.used) return -EBUSY;
    if (const int failed = Configure("request", opened, request.config)) return failed;
    Use(line, request.consumer, true);
    requested += chips[opened.chip].name + ":" + std::to_string(opened.line) + " ";
    request.fd = Add(opened);
    return 0;
  }
  int Configure(const char* name, Opened opened, const gpio_v2_line_config& config) {
    constexpr std::uint64_t kPulled = GPIO_V2_LINE_FLAG_INPUT;
    static const std::map<std::uint64_t, const char*> kSettings{
        {GPIO_V2_LINE_FLAG_OUTPUT, "out"},
        {kPulled | GPIO_V2_LINE_FLAG_BIAS_PULL_UP, "in+"},
        {kPulled | GPIO_V2_LINE_FLAG_BIAS_PULL_DOWN, "in-"}};
    std::string setting = kSettings.at(config.flags);
    const bool output = setting == "out";
    const auto& [attribute, mask] = config.attrs[0];
    if (config.num_attrs > 0 && (attribute.id != GPIO_V2_LINE_ATTR_ID_OUTPUT_VALUES || mask != 1)) {
      throw std::logic_error("an attribute that a single output does not have");
    }
    const bool driven = config.num_attrs > 0 && (attribute.values & 1) != 0;
    const bool high = output ? driven : setting == "in+";
    if (output) setting += high ? "1" : "0";
    FakeGpioLine& line = LineOf(opened);
    const int failed = call(name, ":" + std::to_string(opened.line) + "=" + setting);
    if (failed != 0) return failed;
    if (chips[opened.chip].gone) return -ENODEV;
    if (output && line.inputOnly) return -EIO;
    line.output = output;
    line.high = high;
    moved();
    return 0;
  }
  int Set(Opened opened, const gpio_v2_line_values& values) {
    if (values.mask != 1) throw std::logic_error("a value of another line");
    FakeGpioLine& line = LineOf(opened);
    const std::string level = values.bits == 0 ? "=0" : "=1";
    if (const int failed = call("set", ":" + std::to_string(opened.line) + level)) return failed;
    if (chips[opened.chip].gone) return -ENODEV;
    if (!line.output) return -EPERM;
    line.high = values.bits != 0;
    moved();
    return 0;
  }
  int Get(Opened opened, gpio_v2_line_values& values) {
    if (values.mask != 1) throw std::logic_error("a value of another line");
    if (const int failed = call("get", ":" + std::to_string(opened.line))) return failed;
    if (chips[opened.chip].gone) return -ENODEV;
    values.bits = LineOf(opened).Level() ? 1 : 0;
    return 0;
  }

  std::map<int, Opened> open_;
  int last_ = 100;
};
