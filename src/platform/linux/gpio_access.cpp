#include "platform/linux/gpio_access.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "platform/files.h"
#include "platform/linux/gpio_lines.h"
#include "platform/linux/gpio_messages.h"
#include "platform/linux/port_access.h"
#include "platform/linux/port_messages.h"

namespace {

constexpr int kNotSupported = 524;  // the kernel's ENOTSUPP, which has no name outside of it

/// What drivers answer for a line that has one direction.
bool RefusesDirection(PortFault fault) {
  constexpr std::array kErrors{EIO, EINVAL, EPERM, EOPNOTSUPP, kNotSupported};
  return std::find(kErrors.begin(), kErrors.end(), fault.error) != kErrors.end();
}

/// A line for output and input is open drain, by its direction: every chip can do that.
LineSetting SettingOf(const PortLine& line, bool high) {
  const bool pushPull = line.input == 0;
  return {.output = line.output != 0 && (pushPull || !high), .high = high};
}

class GpioAccess final : public PortAccess {
 public:
  explicit GpioAccess(const PortUse& use) : use_(use) {}
  ~GpioAccess() override { GiveBack(); }
  GpioAccess(const GpioAccess&) = delete;
  GpioAccess& operator=(const GpioAccess&) = delete;

  /// With the released level, so that there is no edge on the way.
  PortFault Take(const PortLine& line) {
    const bool high = line.output == 0 || IsReleasedHigh(line);
    std::optional<GpioLine> taken;
    const PortFault fault = line.chip->Request(line.number, SettingOf(line, high), taken);
    if (!fault) lines_.push_back({line, high, std::move(*taken)});
    return fault;
  }

  PortFault Write(PortRegister which, std::uint8_t value) override;
  /// Only the bits that are sampled.
  PortFault ReadStatus(std::uint8_t& value) override;
  bool Gone() const override {
    bool high = false;
    return !lines_.empty() && lines_.front().line.Get(high).error == ENODEV;
  }
  std::uint8_t Carried(PortRegister which) const override;
  std::string Words(std::uint32_t base, const std::string& device, PortFault fault) const override;
  PortFault GiveBack() override;

 private:
  struct Taken {
    PortLine at;
    bool high;  // as its output bit was written last
    GpioLine line;
  };

  bool IsReleasedHigh(const PortLine& line) const {
    return ((line.which == PortRegister::Data ? use_.data : use_.control) & line.output) != 0;
  }
  PortFault Drive(Taken& taken, bool high);

  const PortUse use_;
  std::vector<Taken> lines_;  // none when they were given back
  std::string noOutput_;      // the line that could not be turned to an output
};

PortFault GpioAccess::Drive(Taken& taken, bool high) {
  if (taken.high == high) return {};
  const LineSetting setting = SettingOf(taken.at, high);
  const bool turns = setting.output != SettingOf(taken.at, !high).output;
  const PortFault fault = turns ? taken.line.Configure(setting) : taken.line.Set(high);
  if (!fault) taken.high = high;
  if (turns && setting.output && RefusesDirection(fault)) noOutput_ = taken.at.text;
  return fault;
}

PortFault GpioAccess::Write(PortRegister which, std::uint8_t value) {
  for (Taken& taken : lines_) {
    if (taken.at.output == 0 || taken.at.which != which) continue;
    if (const PortFault fault = Drive(taken, (value & taken.at.output) != 0)) return fault;
  }
  return {};
}

PortFault GpioAccess::ReadStatus(std::uint8_t& value) {
  std::uint8_t status = 0;
  for (const Taken& taken : lines_) {
    if ((taken.at.input & use_.sampled) == 0) continue;
    bool high = false;
    if (const PortFault fault = taken.line.Get(high)) return fault;
    if (high) status |= taken.at.input;
  }
  value = status;
  return {};
}

std::uint8_t GpioAccess::Carried(PortRegister which) const {
  int carried = 0;
  for (const Taken& taken : lines_) {
    if (which == PortRegister::Status) carried |= taken.at.input;
    if (which == taken.at.which) carried |= taken.at.output;
  }
  return static_cast<std::uint8_t>(carried);
}

std::string GpioAccess::Words(std::uint32_t base, const std::string& device,
                              PortFault fault) const {
  if (fault.error == ENODEV) return port_messages::Gone(base, device);
  if (noOutput_.empty()) return {};
  return port_messages::WithoutPort(gpio_messages::NoOutput(noOutput_, fault));
}

PortFault GpioAccess::GiveBack() {
  PortFault first;
  const auto keep = [&first](PortFault fault) {
    if (!first) first = fault;
  };
  for (Taken& taken : lines_) {
    if (taken.at.output != 0) keep(Drive(taken, IsReleasedHigh(taken.at)));
  }
  for (Taken& taken : lines_) {
    if (!SettingOf(taken.at, taken.high).output) continue;
    keep(taken.line.Configure({.output = false, .high = taken.high}));
  }
  lines_.clear();
  return first;
}

TakenPort Take(PortLines& found, const PortUse& use) {
  auto access = std::make_unique<GpioAccess>(use);
  for (const PortLine& line : found.lines) {
    const PortFault fault = access->Take(line);
    if (!fault) continue;
    if (line.output != 0 && line.input == 0 && RefusesDirection(fault)) {
      return {.problem = gpio_messages::NoOutput(line.text, fault)};
    }
    return {.problem = WhyNotTaken(line, fault)};
  }
  return {.access = std::move(access), .device = found.Device()};
}

}  // namespace

TakenPort TakeGpio(PortSystem& system, const PortPlace& place) {
  const GpioPortFile file = ReadGpioPorts(place.folder);
  if (!file.Describes(place.use.base)) {
    // A row that belongs to an unknown address must not take another port's place.
    const std::string problem = file.ProblemOf(std::nullopt);
    return {.problem = problem.empty() ? "" : port_messages::WithoutPort(problem),
            .othersMayTry = true};
  }
  PortLines found = FindPortLines(system, file, place.use.base);
  TakenPort taken =
      found.problem.empty() ? Take(found, place.use) : TakenPort{.problem = found.problem};
  if (!taken.access) taken.problem = port_messages::WithoutPort(taken.problem);
  return taken;
}

std::vector<PortNote> GpioPorts(PortSystem& system, const std::filesystem::path& folder) {
  const GpioPortFile file = ReadGpioPorts(folder);
  std::vector<PortNote> notes;
  for (const std::uint32_t base : file.addresses) {
    const PortLines found = FindPortLines(system, file, base);
    notes.push_back({base, found.Device(), found.problem});
  }
  const std::string stray = file.ProblemOf(std::nullopt);
  if (!stray.empty()) notes.push_back({{}, PathText(file.path), stray});
  for (const std::string& node : GpioNodes(system)) {
    const GpioChip::Opened opened = GpioChip::Open(system, node);
    if (opened.chip) {
      notes.push_back({{}, opened.chip->Text(), {}});
    } else {
      notes.push_back({{}, node, WhyNotOpened(system, node, opened.fault)});
    }
  }
  return notes;
}
