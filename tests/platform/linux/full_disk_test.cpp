// A disk on which no file can grow beyond a few bytes.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <array>
#include <csignal>

#include "platform/files.h"
#include "support/temp_folder.h"

namespace {

class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);  // the write fails instead
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit full{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
  }
  ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before_); }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit before_{};
};

TEST(FullDisk, KeepsTheOldContentAndSaysWhy) {
  const TempFolder folder;
  folder.Write("a", "old");
  const std::array<std::uint8_t, 6> longer{1, 2, 3, 4, 5, 6};
  std::string existing, missing;
  {
    const FullDisk full(4);
    existing = WriteAtStart(folder / "a", longer);
    missing = WriteAtStart(folder / "b", longer);
  }
  EXPECT_EQ(existing, "File too large");
  EXPECT_EQ(missing, "File too large");
  EXPECT_EQ(folder.Read("a"), "old");
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"a"}) << "no half file is left";
}

}  // namespace
