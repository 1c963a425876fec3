// The system calls that reach a port on Linux, one method a call, so that tests can stand
// in for the kernel. Knows nothing of ports, ways or messages.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// Calls that can fail return minus errno when they do.
class PortSystem {
 public:
  virtual ~PortSystem() = default;

  /// Opens a device node for reading and writing. A descriptor >= 0, or minus errno.
  virtual int Open(const std::string& path) = 0;
  virtual void Close(int descriptor) = 0;
  /// `request`: a number of <linux/ppdev.h> or <linux/gpio.h>. `carried`: the byte or the structure
  /// of that request; null for those that carry nothing. 0, or minus errno.
  virtual int Ioctl(int descriptor, unsigned long request, void* carried) = 0;

  /// The same for a request that carries nothing and may sleep: -EINTR once it has slept for
  /// `longest_ms`.
  virtual int IoctlWithin(int descriptor, unsigned long request, std::uint32_t longest_ms) = 0;

  /// Lets this thread use the I/O ports `first`..`first` + `count` - 1, or takes that right back.
  /// 0, or minus errno; -ENOSYS on machines without I/O ports.
  virtual int IoPerm(std::uint32_t first, std::uint32_t count, bool allow) = 0;
  /// One byte to or from an I/O port that `IoPerm` has allowed; the process dies on any other.
  virtual void Out(std::uint32_t port, std::uint8_t value) = 0;
  virtual std::uint8_t In(std::uint32_t port) = 0;

  /// The first 4 KiB of a file; empty when it cannot be read.
  virtual std::string ReadText(const std::string& path) = 0;
  /// The names in a folder, sorted; none when it cannot be read.
  virtual std::vector<std::string> ListFolder(const std::string& path) = 0;
  /// The group that owns a file; empty when it has no name, or when there is no such file. Nobody
  /// can be made a member of a group without a name.
  virtual std::string GroupOf(const std::string& path) = 0;
  virtual bool IsRoot() = 0;
};

/// The running kernel.
std::unique_ptr<PortSystem> LinuxPortSystem();
