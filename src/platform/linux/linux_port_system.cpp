#include <fcntl.h>
#include <grp.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>

#include "platform/linux/port_system.h"

#if defined(__x86_64__) || defined(__i386__)
#include <sys/io.h>
#else
// Other machines have no I/O ports, and no right to them can be had.
namespace {
int ioperm(unsigned long, unsigned long, int) {
  errno = ENOSYS;
  return -1;
}
void outb(unsigned char, unsigned short) {}
unsigned char inb(unsigned short) { return 0xFF; }
}  // namespace
#endif

namespace {

constexpr std::size_t kLargestText = 4096;  // bytes; a file of /proc/sys is at most a page

/// While it lives, sleeping system calls of this process end with EINTR once the time has passed.
class WakingTimer {
 public:
  explicit WakingTimer(std::uint32_t after_ms) {
    struct sigaction wake {};
    wake.sa_handler = [](int) {};  // without SA_RESTART, so that the call is not begun anew
    sigaction(SIGALRM, &wake, &before_);
    // Again and again: a first signal that comes just before the call sleeps would wake nobody.
    const itimerval times{
        .it_interval = {.tv_sec = 0, .tv_usec = 100'000},
        .it_value = {.tv_sec = after_ms / 1000,
                     .tv_usec = static_cast<suseconds_t>(after_ms % 1000) * 1000}};
    setitimer(ITIMER_REAL, &times, nullptr);
  }
  ~WakingTimer() {
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &before_, nullptr);
  }
  WakingTimer(const WakingTimer&) = delete;
  WakingTimer& operator=(const WakingTimer&) = delete;

 private:
  struct sigaction before_ {};
};

class RunningKernel final : public PortSystem {
 public:
  int Open(const std::string& path) override {
    return OrError(open(path.c_str(), O_RDWR | O_CLOEXEC));
  }
  void Close(int descriptor) override { close(descriptor); }
  int Ioctl(int descriptor, unsigned long request, void* carried) override {
    return OrError(ioctl(descriptor, request, carried));
  }

  int IoctlWithin(int descriptor, unsigned long request, std::uint32_t longest_ms) override {
    const WakingTimer timer(longest_ms);
    return Ioctl(descriptor, request, nullptr);
  }

  int IoPerm(std::uint32_t first, std::uint32_t count, bool allow) override {
    return OrError(ioperm(first, count, allow ? 1 : 0));
  }
  void Out(std::uint32_t port, std::uint8_t value) override {
    outb(value, static_cast<unsigned short>(port));
  }
  std::uint8_t In(std::uint32_t port) override { return inb(static_cast<unsigned short>(port)); }

  std::string ReadText(const std::string& path) override;
  std::vector<std::string> ListFolder(const std::string& path) override;
  std::string GroupOf(const std::string& path) override;
  bool IsRoot() override { return geteuid() == 0; }

 private:
  static int OrError(int result) { return result < 0 ? -errno : result; }
};

// The size of a file below /proc is 0 before it is read, so that only reading tells its length.
std::string RunningKernel::ReadText(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return {};
  std::array<char, kLargestText> text{};
  const ssize_t length = read(file, text.data(), text.size());
  close(file);
  return length > 0 ? std::string(text.data(), static_cast<std::size_t>(length)) : std::string();
}

std::vector<std::string> RunningKernel::ListFolder(const std::string& path) {
  std::vector<std::string> names;
  std::error_code unreadable;
  std::filesystem::directory_iterator entry(path, unreadable);
  while (!unreadable && entry != std::filesystem::directory_iterator()) {
    names.push_back(entry->path().filename().string());
    entry.increment(unreadable);
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string RunningKernel::GroupOf(const std::string& path) {
  struct stat node {};
  if (stat(path.c_str(), &node) != 0) return {};
  const group* owner = getgrgid(node.st_gid);
  return owner != nullptr ? owner->gr_name : "";
}

}  // namespace

std::unique_ptr<PortSystem> LinuxPortSystem() { return std::make_unique<RunningKernel>(); }
