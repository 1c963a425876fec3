// A kernel with parallel ports and GPIO chips, as far as the port code sees it. It keeps a record
// of the calls, fails those it is told to fail, and holds to the real one's rules: the claim sets
// the control register to 0x0C, an exclusive claim is refused when other drivers are registered,
// and a shared claim on a held port sleeps.
#pragma once

#include <linux/ppdev.h>
#include <sys/ioctl.h>

#include <array>
#include <cerrno>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/linux_parallel_port.h"
#include "support/fake_gpio.h"
#include "text/hex_text.h"

struct FakeKernel {
  std::map<std::string, int> failures;  // errno by the call's name, without its arguments
  std::map<std::string, std::string> texts;
  std::map<std::string, std::vector<std::string>> folders;
  std::string group = "lp";
  bool root = false;
  std::array<std::uint8_t, 3> registers{0xA5, 0x78, 0x03};  // data, status, control
  std::string& holder = texts["/proc/sys/dev/parport/parport0/devices/active"];
  bool othersRegistered = false;  // drivers on the usual port, idle or not
  bool registeredAlone = false;   // the one of them that is idle allows no other
  int opensUntilHeld = 0;         // at this call of open another driver takes the usual port
  FakeGpio gpio;

  bool open = false;
  bool exclusive = false;
  std::uint32_t ioPorts = 0;  // the first of the three allowed ones; 0: none is allowed
  std::string calls;          // since the last `PortRig::Calls`
  int looks = 0;              // at the addresses of ports

  void AddPort(const std::string& name, const std::string& baseAddr) {
    folders["/proc/sys/dev/parport/"].push_back(name);
    texts["/proc/sys/dev/parport/" + name + "/base-addr"] = baseAddr;
    texts["/proc/sys/dev/parport/" + name + "/devices/active"] = "none\n";
  }
  void RemoveUsualPort() {
    folders.clear();
    for (auto& [path, text] : texts) text.clear();
  }

  /// Records a call; minus errno when it has to fail.
  int Call(const std::string& name, const std::string& arguments = {}) {
    calls += (calls.empty() ? "" : " ") + name + arguments;
    return -failures[name];
  }
};

struct FakePortSystem final : PortSystem {
  explicit FakePortSystem(FakeKernel& kernel) : kernel_(kernel) {
    kernel_.gpio.call = [&kernel](auto& name, auto& with) { return kernel.Call(name, with); };
  }

  int Open(const std::string& path) override {
    if (path.starts_with("/dev/gpio")) return kernel_.gpio.Open(path);
    const int failed = kernel_.Call("open", ":" + path);
    if (--kernel_.opensUntilHeld == 0) kernel_.holder = "lp\n";
    kernel_.open = failed == 0;
    return kernel_.open ? kDescriptor : failed;
  }
  void Close(int descriptor) override {
    if (kernel_.gpio.Has(descriptor)) return kernel_.gpio.Close(descriptor);
    kernel_.Call("close");
    if (descriptor == kDescriptor) kernel_.open = kernel_.exclusive = false;
  }

  int Ioctl(int descriptor, unsigned long request, void* carried) override {
    if (kernel_.gpio.Has(descriptor)) return kernel_.gpio.Ioctl(descriptor, request, carried);
    auto* const byte = static_cast<std::uint8_t*>(carried);
    static const std::map<unsigned long, std::pair<const char*, std::size_t>> kRequests{
        {PPEXCL, {"PPEXCL", 0}},   {PPCLAIM, {"PPCLAIM", 0}},      {PPRELEASE, {"PPRELEASE", 0}},
        {PPRDATA, {"PPRDATA", 0}}, {PPRSTATUS, {"PPRSTATUS", 1}},  {PPRCONTROL, {"PPRCONTROL", 2}},
        {PPWDATA, {"PPWDATA", 0}}, {PPWCONTROL, {"PPWCONTROL", 2}}};
    if (descriptor != kDescriptor || !kernel_.open) return -EBADF;
    const auto& [name, registerNumber] = kRequests.at(request);
    const bool writes = _IOC_DIR(request) == _IOC_WRITE;
    if (const int failed = kernel_.Call(name, writes ? "=" + Hex(*byte) : "")) return failed;
    if (request == PPEXCL) kernel_.exclusive = true;
    if (request == PPCLAIM) return Claim();
    if (request == PPRELEASE && kernel_.holder == "ppdev0\n") kernel_.holder = "none\n";
    if (byte == nullptr) return 0;
    std::uint8_t& value = kernel_.registers.at(registerNumber);
    (writes ? value : *byte) = writes ? *byte : value;
    return 0;
  }
  int IoctlWithin(int descriptor, unsigned long request, std::uint32_t longest_ms) override {
    kernel_.Call("within", ":" + std::to_string(longest_ms));
    return Ioctl(descriptor, request, nullptr);
  }

  int IoPerm(std::uint32_t first, std::uint32_t count, bool allow) override {
    const int failed = kernel_.Call("ioperm", ":" + Hex(first) + (allow ? "+" : "-") + Hex(count));
    if (failed == 0) kernel_.ioPorts = allow ? first : 0;
    return failed;
  }
  // The real process would die on a port that was not allowed; here it is told by an exception.
  void Out(std::uint32_t port, std::uint8_t value) override {
    kernel_.Call("out", ":" + Hex(port) + "=" + Hex(value));
    kernel_.registers.at(port - kernel_.ioPorts) = value;
  }
  std::uint8_t In(std::uint32_t port) override {
    kernel_.Call("in", ":" + Hex(port));
    return kernel_.registers.at(port - kernel_.ioPorts);
  }

  std::string ReadText(const std::string& path) override {
    if (path.ends_with("base-addr")) ++kernel_.looks;
    return kernel_.texts[path];
  }
  std::vector<std::string> ListFolder(const std::string& path) override {
    if (path == "/dev") return Nodes();
    return kernel_.folders[path];
  }
  std::string GroupOf(const std::string&) override { return kernel_.group; }
  bool IsRoot() override { return kernel_.root; }

 private:
  static constexpr int kDescriptor = 7;

  std::vector<std::string> Nodes() const {
    std::vector<std::string> names{"null", "tty"};
    for (const FakeGpioChip& chip : kernel_.gpio.chips) names.push_back(chip.node.substr(5));
    return names;
  }

  static std::string Hex(std::uint32_t number) {
    return (number < 0x10 ? "0" : "") + HexText(static_cast<std::int32_t>(number));
  }
  int Claim() {
    if (kernel_.registeredAlone) return -ENXIO;
    if (kernel_.exclusive && kernel_.othersRegistered) return -ENXIO;
    if (!kernel_.exclusive && kernel_.holder == "lp\n") return -EINTR;  // it has slept that long
    if (kernel_.holder == "none\n") kernel_.holder = "ppdev0\n";
    kernel_.registers[2] = 0x0C;
    return 0;
  }

  FakeKernel& kernel_;
};

/// The real port code over such a kernel on a PC, and what it told the operator.
struct PortRig {
  explicit PortRig(const std::filesystem::path& boardFolder = "boards") : folder(boardFolder) {}

  const std::filesystem::path folder;
  FakeKernel kernel;
  std::vector<std::string> told;
  std::unique_ptr<PortIo> io = std::make_unique<LinuxParallelPort>(
      std::make_unique<FakePortSystem>(kernel), folder,
      [this](auto& text) { told.push_back(text); }, kX86PortWays);

  std::string Calls() { return std::exchange(kernel.calls, {}); }
  void AddUsualPort() { kernel.AddPort("parport0", "888\t1912\n"); }
  /// With the usual port in use and its calls forgotten.
  void UseUsualPort() {
    AddUsualPort();
    io->UsePort({.base = 0x378});
    Calls();
  }
};
