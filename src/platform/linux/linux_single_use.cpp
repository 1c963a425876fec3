#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/single_use.h"

namespace {

class LockedFile final : public SingleUse {
 public:
  explicit LockedFile(int file) : file_(file) {}
  ~LockedFile() override {
    if (file_ >= 0) close(file_);
  }
  LockedFile(const LockedFile&) = delete;
  LockedFile& operator=(const LockedFile&) = delete;

 private:
  const int file_;
};

/// The folder is everybody's: a file of another user's can be opened there, but not with O_CREAT.
int OpenLock(const std::string& path) {
  const int there = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
  if (there >= 0 || errno != ENOENT) return there;
  const int made = open(path.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0644);
  if (made >= 0) fchmod(made, 0644);  // whatever the operator's mask takes away
  return made;
}

}  // namespace

std::unique_ptr<SingleUse> HoldAlone(const std::string& what) {
  const int file = OpenLock("/run/lock/" + what);
  const bool held = file >= 0 && flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  auto lock = std::make_unique<LockedFile>(file);
  return held ? nullptr : std::move(lock);
}
