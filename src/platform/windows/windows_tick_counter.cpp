#include <windows.h>

#include "platform/tick_counter.h"

namespace {

class WindowsTickCounter final : public TickCounter {
 public:
  std::uint32_t GetTickCount() override { return ::GetTickCount(); }
};

}  // namespace

std::unique_ptr<TickCounter> SystemTickCounter() { return std::make_unique<WindowsTickCounter>(); }
