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
bool RefusesDirection(const Status& call) {
  constexpr std::array kErrors{EIO, EINVAL, EPERM, EOPNOTSUPP, kNotSupported};
  return std::find(kErrors.begin(), kErrors.end(), call.Error()) != kErrors.end();
}

/// A line for output and input is open drain, by its direction: every chip can do that.
LineSetting SettingOf(const PortLine& line, bool high) {
  const bool pushPull = line.input == 0;
  return {.output = line.output != 0 && (pushPull || !high), .high = high};
}

class GpioAccess final : public PortAccess {
 public:
  explicit GpioAccess(const PortUse& use) : use_(use) {}
  ~GpioAccess() override { static_cast<void>(GiveBack()); }
  GpioAccess(const GpioAccess&) = delete;
  GpioAccess& operator=(const GpioAccess&) = delete;

  /// With the released level, so that there is no edge on the way.
  Status Take(const PortLine& line) {
    const bool high = line.output == 0 || IsReleasedHigh(line);
    auto taken = line.chip->Request(line.number, SettingOf(line, high));
    if (taken.Ok()) lines_.push_back({line, high, std::move(*taken)});
    return taken;
  }

  Status Write(PortRegister which, std::uint8_t value) override;
  /// Only the bits that are sampled.
  Result<std::uint8_t> ReadStatus() override;
  bool Gone() const override {
    return !lines_.empty() && lines_.front().line.Get().Error() == ENODEV;
  }
  std::uint8_t Carried(PortRegister which) const override;
  std::string Words(std::uint32_t base, const std::string& device,
                    const Status& failure) const override;
  Status GiveBack() override;

 private:
  struct Taken {
    PortLine at;
    bool high;  // as its output bit was written last
    GpioLine line;
  };

  bool IsReleasedHigh(const PortLine& line) const {
    return ((line.which == PortRegister::Data ? use_.data : use_.control) & line.output) != 0;
  }
  Status Drive(Taken& taken, bool high);

  const PortUse use_;
  std::vector<Taken> lines_;  // none when they were given back
  std::string noOutput_;      // the line that could not be turned to an output
};

Status GpioAccess::Drive(Taken& taken, bool high) {
  if (taken.high == high) return {};
  const LineSetting setting = SettingOf(taken.at, high);
  const bool turns = setting.output != SettingOf(taken.at, !high).output;
  Status driven = turns ? taken.line.Configure(setting) : taken.line.Set(high);
  if (driven.Ok()) taken.high = high;
  if (turns && setting.output && RefusesDirection(driven)) noOutput_ = taken.at.text;
  return driven;
}

Status GpioAccess::Write(PortRegister which, std::uint8_t value) {
  for (Taken& taken : lines_) {
    if (taken.at.output == 0 || taken.at.which != which) continue;
    Status driven = Drive(taken, (value & taken.at.output) != 0);
    if (!driven.Ok()) return driven;
  }
  return {};
}

Result<std::uint8_t> GpioAccess::ReadStatus() {
  std::uint8_t status = 0;
  for (const Taken& taken : lines_) {
    if ((taken.at.input & use_.sampled) == 0) continue;
    const Result<bool> high = taken.line.Get();
    if (!high.Ok()) return high;
    if (*high) status |= taken.at.input;
  }
  return status;
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
                              const Status& failure) const {
  if (failure.Error() == ENODEV) return port_messages::Gone(base, device);
  if (noOutput_.empty()) return {};
  return port_messages::WithoutPort(gpio_messages::NoOutput(noOutput_, failure));
}

Status GpioAccess::GiveBack() {
  Status given;
  for (Taken& taken : lines_) {
    if (taken.at.output != 0) given.Also(Drive(taken, IsReleasedHigh(taken.at)));
  }
  for (Taken& taken : lines_) {
    if (!SettingOf(taken.at, taken.high).output) continue;
    given.Also(taken.line.Configure({.output = false, .high = taken.high}));
  }
  lines_.clear();
  return given;
}

TakenPort Take(PortLines& found, const PortUse& use) {
  auto access = std::make_unique<GpioAccess>(use);
  for (const PortLine& line : found.lines) {
    const Status taken = access->Take(line);
    if (taken.Ok()) continue;
    if (line.output != 0 && line.input == 0 && RefusesDirection(taken)) {
      return {.problem = gpio_messages::NoOutput(line.text, taken)};
    }
    return {.problem = WhyNotTaken(line, taken)};
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
    const auto chip = GpioChip::Open(system, node);
    if (chip.Ok()) {
      notes.push_back({{}, (*chip)->Text(), {}});
    } else {
      notes.push_back({{}, node, WhyNotOpened(system, node, chip)});
    }
  }
  return notes;
}
