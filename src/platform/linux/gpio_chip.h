// A chip of GPIO lines, and a line of it, through the kernel's character device (interface v2).
// Knows nothing of ports and registers.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/port_system.h"
#include "platform/status.h"

/// A descriptor that is closed at the end.
class Descriptor {
 public:
  Descriptor() = default;  // none
  Descriptor(PortSystem& system, int number) : system_(&system), number_(number) {}
  Descriptor(Descriptor&& other) noexcept
      : system_(other.system_), number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&&) = delete;
  ~Descriptor() {
    if (number_ >= 0) system_->Close(number_);
  }

  Status Call(const char* name, unsigned long request, void* argument) const {
    return Status::OfCall(name, system_->Ioctl(number_, request, argument));
  }

 private:
  PortSystem* system_ = nullptr;
  int number_ = -1;
};

/// What a line does at its pin.
struct LineSetting {
  bool output = false;
  bool high = false;  // the level of an output, or to which an input is pulled where it can be

  bool operator==(const LineSetting&) const = default;
};

/// A line that was requested: nobody else can until it is destroyed. Each method is one system
/// call.
class GpioLine {
 public:
  explicit GpioLine(Descriptor descriptor = {}) : descriptor_(std::move(descriptor)) {}

  Status Configure(LineSetting setting);
  /// The level of an output.
  Status Set(bool high);
  Result<bool> Get() const;

 private:
  Descriptor descriptor_;
};

class GpioChip {
 public:
  /// Opens the node and asks for the chip's facts; requests no line. ENOTTY: it is no GPIO chip.
  static Result<std::unique_ptr<GpioChip>> Open(PortSystem& system, const std::string& node);

  std::string node;
  std::string name;  // the kernel's, "gpiochip0", whatever the node is called
  std::string label;
  std::uint32_t lines = 0;

  /// "/dev/gpiochip0 (pinctrl-bcm2835, 54 lines)"
  std::string Text() const;

  struct LineInfo {
    std::string name;      // may be empty
    std::string consumer;  // of a line in use; may be empty
    bool used = false;
  };
  /// `line`: 0 to `lines` - 1.
  Result<LineInfo> Look(std::uint32_t line) const;
  /// Takes the line for "isp-writer", with this setting from the first moment on.
  Result<GpioLine> Request(std::uint32_t line, LineSetting setting) const;

 private:
  GpioChip(PortSystem& system, std::string path, int descriptor)
      : node(std::move(path)), system_(system), descriptor_(system, descriptor) {}

  PortSystem& system_;
  Descriptor descriptor_;
};

/// The nodes of all chips, sorted.
std::vector<std::string> GpioNodes(PortSystem& system);
