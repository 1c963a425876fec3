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
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/linux_parallel_port.h"

struct FakeKernel {
  struct Failure {
    int error = 0;
    int times = -1;  // negative: always
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
    folders["/proc/sys/dev/parport/"].push_back(name);
    texts["/proc/sys/dev/parport/" + name + "/base-addr"] = baseAddr;
    Holder(name) = "none\n";
  }
  std::string& Holder(const std::string& name) {
    return texts["/proc/sys/dev/parport/" + name + "/devices/active"];
  }
  std::string TakeCalls() { return std::exchange(calls, {}); }

  /// Records a call; minus errno when it has to fail.
  int Call(const std::string& name, const std::string& arguments = {}) {
    calls += (calls.empty() ? "" : " ") + name + arguments;
    meanwhile(name);
    Failure& failure = failures[name];
    return failure.times-- == 0 ? failure.times = 0 : -failure.error;
  }
};

class FakePortSystem final : public PortSystem {
 public:
  explicit FakePortSystem(FakeKernel& kernel) : kernel_(kernel) {}

  int Open(const std::string& path) override {
    const int failed = kernel_.Call("open", ":" + path);
    kernel_.open = failed == 0;
    return kernel_.open ? kDescriptor : failed;
  }
  void Close(int descriptor) override {
    kernel_.Call("close");
    if (descriptor == kDescriptor) kernel_.open = kernel_.claimed = kernel_.exclusive = false;
  }

  int Ioctl(int descriptor, unsigned long request, std::uint8_t* byte) override {
    struct Request {
      const char* name;
      int reads = -1, writes = -1;  // a register
    };
    static const std::map<unsigned long, Request> kRequests{
        {PPEXCL, {"PPEXCL"}},          {PPCLAIM, {"PPCLAIM"}},
        {PPRELEASE, {"PPRELEASE"}},    {PPRDATA, {"PPRDATA", 0}},
        {PPRSTATUS, {"PPRSTATUS", 1}}, {PPRCONTROL, {"PPRCONTROL", 2}},
        {PPWDATA, {"PPWDATA", -1, 0}}, {PPWCONTROL, {"PPWCONTROL", -1, 2}}};
    if (descriptor != kDescriptor || !kernel_.open) return -EBADF;
    const Request& call = kRequests.at(request);
    const int failed = kernel_.Call(call.name, call.writes < 0 ? "" : "=" + Hex(*byte));
    if (failed != 0) return failed;
    if (request == PPEXCL) kernel_.exclusive = true;
    if (request == PPCLAIM) return Claim();
    if (byte != nullptr && !kernel_.claimed) return -EINVAL;
    if (request == PPRELEASE) kernel_.claimed = false;
    if (call.writes >= 0) kernel_.registers.at(static_cast<std::size_t>(call.writes)) = *byte;
    if (call.reads >= 0) *byte = kernel_.registers.at(static_cast<std::size_t>(call.reads));
    return 0;
  }
  int IoctlWithin(int descriptor, unsigned long request, std::uint32_t longest_ms) override {
    kernel_.longestClaim_ms = longest_ms;
    return Ioctl(descriptor, request, nullptr);
  }

  int IoPerm(std::uint32_t first, std::uint32_t count, bool allow) override {
    const int failed =
        kernel_.Call("ioperm", ":" + Hex(first) + "+" + Hex(count) + (allow ? "on" : "off"));
    if (failed == 0) kernel_.ioPorts = allow ? std::optional(first) : std::nullopt;
    return failed;
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
  int Claim() {
    for (const auto& [path, text] : kernel_.texts) {
      const bool held = path.ends_with("/active") && text != "none\n" && !text.empty();
      if (held && !kernel_.exclusive) return -EINTR;  // it has slept for the longest time
    }
    kernel_.claimed = true;
    kernel_.registers[2] = 0x0C;
    return 0;
  }
  /// The real process would die on a port that was not allowed; here it is told by an exception.
  std::uint8_t& Register(std::uint32_t port) {
    return kernel_.registers.at(port - kernel_.ioPorts.value());
  }

  FakeKernel& kernel_;
};

/// The real port code over such a kernel, and what it told the operator.
struct PortBench {
  FakeKernel kernel;
  std::vector<std::string> told;
  std::unique_ptr<PortIo> io = std::make_unique<LinuxParallelPort>(
      std::make_unique<FakePortSystem>(kernel),
      [this](const std::string& message) { told.push_back(message); });

  void AddUsualPort() { kernel.AddPort("parport0", "888\t1912\n"); }
  /// With the usual port in use and its calls forgotten.
  void UseUsualPort() {
    AddUsualPort();
    io->UsePort(0x378);
    kernel.TakeCalls();
  }
};
