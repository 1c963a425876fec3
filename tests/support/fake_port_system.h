// A kernel with parallel ports, as far as the port code sees it. It keeps a record of the calls,
// fails those it is told to fail, and holds to the real one's rules: the registers can be reached
// only after the claim, the claim sets the control register to 0x0C, and a shared claim on a held
// port sleeps.
#pragma once

#include <linux/ppdev.h>
#include <sys/ioctl.h>
#include <sys/time.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/port_system.h"

struct FakeKernel {
  static constexpr int kAlways = 1 << 30;
  struct Failure {
    int error = 0;
    int times = kAlways;
  };

  std::map<std::string, Failure> failures;  // by the call's name, without its arguments
  std::map<std::string, std::string> texts;
  std::map<std::string, std::vector<std::string>> folders;
  std::string group = "lp";
  bool root = false;
  std::array<std::uint8_t, 3> registers{0xA5, 0x78, 0x03};  // data, status, control

  /// Run at every call: what else happens in the machine at that moment.
  std::function<void(const std::string& name)> meanwhile = [](const std::string&) {};

  bool open = false;
  bool claimed = false;
  bool exclusive = false;
  std::uint32_t longestClaim_ms = 0;     // bound of the last claim
  std::optional<std::uint32_t> ioPorts;  // the first of the three allowed ones
  std::string calls;                     // since the last `TakeCalls`

  /// Adds a port that nobody holds.
  void AddPort(const std::string& name, const std::string& baseAddr) {
    const std::string folder = "/proc/sys/dev/parport/";
    folders[folder].push_back(name);
    texts[folder + name + "/base-addr"] = baseAddr;
    SetHolder(name, "none");
  }
  void SetHolder(const std::string& name, const std::string& holder) {
    texts["/proc/sys/dev/parport/" + name + "/devices/active"] = holder + "\n";
  }
  void SetDrivers(const std::string& name, std::vector<std::string> drivers) {
    folders["/proc/sys/dev/parport/" + name + "/devices"] = std::move(drivers);
  }

  std::string TakeCalls() {
    std::string taken;
    taken.swap(calls);
    return taken;
  }

  /// Records a call; minus errno when it has to fail.
  int Call(const std::string& name, const std::string& arguments = {}) {
    calls += (calls.empty() ? "" : " ") + name + arguments;
    meanwhile(name);
    Failure& failure = failures[name];
    if (failure.error == 0 || failure.times == 0) return 0;
    --failure.times;
    return -failure.error;
  }
};

class FakePortSystem final : public PortSystem {
 public:
  explicit FakePortSystem(FakeKernel& kernel) : kernel_(kernel) {}

  int Open(const std::string& path) override {
    const int failed = kernel_.Call("open", ":" + path);
    if (failed != 0) return failed;
    kernel_.open = true;
    return kDescriptor;
  }
  void Close(int descriptor) override {
    kernel_.Call("close");
    if (descriptor == kDescriptor) kernel_.open = kernel_.claimed = kernel_.exclusive = false;
  }
  int Ioctl(int descriptor, unsigned long request, std::uint8_t* byte) override {
    if (descriptor != kDescriptor || !kernel_.open) return -EBADF;
    switch (request) {
      case PPEXCL:
        return Exclusive();
      case PPCLAIM:
        return Claim();
      case PPRELEASE:
        return Release();
      case PPWDATA:
        return Write("PPWDATA", 0, *byte);
      case PPWCONTROL:
        return Write("PPWCONTROL", 2, *byte);
      case PPRDATA:
        return Read("PPRDATA", 0, *byte);
      case PPRSTATUS:
        return Read("PPRSTATUS", 1, *byte);
      case PPRCONTROL:
        return Read("PPRCONTROL", 2, *byte);
      default:
        return -ENOTTY;
    }
  }

  int IoctlWithin(int descriptor, unsigned long request, std::uint32_t longest_ms) override {
    kernel_.longestClaim_ms = longest_ms;
    return Ioctl(descriptor, request, nullptr);
  }

  int IoPerm(std::uint32_t first, std::uint32_t count, bool allow) override {
    const int failed =
        kernel_.Call("ioperm", ":" + Hex(first) + "+" + Hex(count) + (allow ? "on" : "off"));
    if (failed != 0) return failed;
    kernel_.ioPorts = allow ? std::optional(first) : std::nullopt;
    return 0;
  }
  void Out(std::uint32_t port, std::uint8_t value) override {
    kernel_.Call("out", ":" + Hex(port) + "=" + Hex(value));
    Register(port) = value;
  }
  std::uint8_t In(std::uint32_t port) override {
    kernel_.Call("in", ":" + Hex(port));
    return Register(port);
  }

  std::string ReadText(const std::string& path) override { return kernel_.texts[path]; }
  std::vector<std::string> ListFolder(const std::string& path) override {
    return kernel_.folders[path];
  }
  std::string GroupOf(const std::string&) override { return kernel_.group; }
  bool IsRoot() override { return kernel_.root; }

 private:
  static constexpr int kDescriptor = 7;

  static std::string Hex(std::uint32_t number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%02X", number);
    return text.data();
  }

  int Exclusive() {
    const int failed = kernel_.Call("PPEXCL");
    kernel_.exclusive = failed == 0;
    return failed;
  }
  int Claim() {
    const int failed = kernel_.Call("PPCLAIM");
    if (failed != 0) return failed;
    for (const auto& [path, text] : kernel_.texts) {
      const bool held = path.ends_with("/active") && text != "none\n" && !text.empty();
      if (held && !kernel_.exclusive) return -EINTR;  // it has slept for the longest time
    }
    kernel_.claimed = true;
    kernel_.registers[2] = 0x0C;
    return 0;
  }
  int Release() {
    const int failed = kernel_.Call("PPRELEASE");
    if (failed == 0) kernel_.claimed = false;
    return failed;
  }
  int Write(const char* name, std::size_t which, std::uint8_t value) {
    const int failed = kernel_.Call(name, "=" + Hex(value));
    if (failed != 0) return failed;
    if (!kernel_.claimed) return -EINVAL;
    kernel_.registers[which] = value;
    return 0;
  }
  int Read(const char* name, std::size_t which, std::uint8_t& value) {
    const int failed = kernel_.Call(name);
    if (failed != 0) return failed;
    if (!kernel_.claimed) return -EINVAL;
    value = kernel_.registers[which];
    return 0;
  }
  /// The real process would die on a port that was not allowed; here it is told by an exception.
  std::uint8_t& Register(std::uint32_t port) {
    return kernel_.registers.at(kernel_.ioPorts ? port - *kernel_.ioPorts
                                                : kernel_.registers.size());
  }

  FakeKernel& kernel_;
};
