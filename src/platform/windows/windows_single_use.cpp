#include <windows.h>

#include "platform/single_use.h"

namespace {

class NamedMutex final : public SingleUse {
 public:
  explicit NamedMutex(HANDLE mutex) : mutex_(mutex) {}
  ~NamedMutex() override {
    if (mutex_ != nullptr) CloseHandle(mutex_);
  }
  NamedMutex(const NamedMutex&) = delete;
  NamedMutex& operator=(const NamedMutex&) = delete;

 private:
  const HANDLE mutex_;
};

}  // namespace

std::unique_ptr<SingleUse> HoldAlone(const std::string& what) {
  const HANDLE mutex = CreateMutexA(nullptr, FALSE, ("Global\\" + what).c_str());
  const DWORD error = GetLastError();
  auto held = std::make_unique<NamedMutex>(mutex);
  // Somebody else's, of another user, cannot even be opened.
  const bool others = error == ERROR_ALREADY_EXISTS || error == ERROR_ACCESS_DENIED;
  return others ? nullptr : std::move(held);
}
