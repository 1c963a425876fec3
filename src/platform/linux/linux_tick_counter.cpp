#include <time.h>

#include "platform/tick_counter.h"

namespace {

constexpr std::uint64_t kStepsPerSecond = 64;
constexpr std::uint64_t kNanosecondsPerSecond = 1'000'000'000;

class LinuxTickCounter final : public TickCounter {
 public:
  std::uint32_t GetTickCount() override {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const auto seconds = static_cast<std::uint64_t>(now.tv_sec);
    const auto nanoseconds = static_cast<std::uint64_t>(now.tv_nsec);
    const std::uint64_t steps =
        seconds * kStepsPerSecond + nanoseconds * kStepsPerSecond / kNanosecondsPerSecond;
    return static_cast<std::uint32_t>(steps * 1000 / kStepsPerSecond);
  }
};

}  // namespace

std::unique_ptr<TickCounter> SystemTickCounter() { return std::make_unique<LinuxTickCounter>(); }
