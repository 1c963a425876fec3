#include "platform/windows/dlport_io.h"

#include <windows.h>

#include <memory>
#include <utility>

#include "platform/port_advice.h"

namespace {

constexpr const char* kLibrary = "dlportio.dll";

/// `LoadLibraryA` without the system's own message box for a damaged library; `error` becomes 0 or
/// the Windows error.
HMODULE LoadQuietly(const char* name, DWORD& error) {
  DWORD previousMode = 0;
  SetThreadErrorMode(SEM_FAILCRITICALERRORS, &previousMode);
  const HMODULE library = LoadLibraryA(name);
  error = library == nullptr ? GetLastError() : 0;
  SetThreadErrorMode(previousMode, nullptr);
  return library;
}

std::string LoadProblem(DWORD error) {
  if (error == ERROR_MOD_NOT_FOUND) return "was not found, or a library that it needs was not";
  if (error == ERROR_BAD_EXE_FORMAT) {
    return "is not a " + std::to_string(sizeof(void*) * 8) + "-bit library, as this program needs";
  }
  return "cannot be loaded (Windows error " + std::to_string(error) + ")";
}

template <typename Entry>
Entry EntryPoint(void* library, const char* name) {
  const FARPROC found = GetProcAddress(static_cast<HMODULE>(library), name);
  return reinterpret_cast<Entry>(reinterpret_cast<void*>(found));
}

}  // namespace

void DlPortIo::UsePort(const PortUse& /*use*/) {
  if (library_ == nullptr) tried_ = false;
}

void DlPortIo::DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) {
  LoadOnce();
  if (write_ != nullptr) write_(port, value);
}

std::optional<std::uint8_t> DlPortIo::DlPortReadPortUchar(std::uint32_t port) {
  LoadOnce();
  return read_ != nullptr ? std::optional(read_(port)) : std::nullopt;
}

void DlPortIo::LoadOnce() {
  // Marked before the attempt: the report may lead to events that access the port again.
  if (std::exchange(tried_, true)) return;
  const Status bound = Bind();
  if (bound.Ok()) return;
  Release();
  report_("The parallel port cannot be reached: the port driver library " + std::string(kLibrary) +
          " " + bound.Reason() + ". Put the 64-bit library beside isp-writer.exe" +
          port_advice::kThenPress);
}

Status DlPortIo::Bind() {
  DWORD error = 0;
  library_ = LoadQuietly(kLibrary, error);
  if (library_ == nullptr) return Status::Failed(LoadProblem(error));
  const auto write = EntryPoint<WriteEntry>(library_, "DlPortWritePortUchar");
  if (write == nullptr) return Status::Failed("has no entry point DlPortWritePortUchar");
  const auto read = EntryPoint<ReadEntry>(library_, "DlPortReadPortUchar");
  if (read == nullptr) return Status::Failed("has no entry point DlPortReadPortUchar");
  write_ = write;
  read_ = read;
  return {};
}

void DlPortIo::Release() {
  write_ = nullptr;
  read_ = nullptr;
  if (library_ != nullptr) FreeLibrary(static_cast<HMODULE>(std::exchange(library_, nullptr)));
}

std::unique_ptr<PortIo> SystemParallelPort(const std::filesystem::path& /*boardFolder*/,
                                           Problem report) {
  return std::make_unique<DlPortIo>(std::move(report));
}

// With the library any address can be reached; which of them belong to a port it does not tell.
std::vector<PortNote> SystemPorts(const std::filesystem::path& /*boardFolder*/,
                                  std::uint32_t base) {
  PortNote note{base, std::string(kLibrary) + ", as any other address", {}};
  DlPortIo([&note](const std::string& message) { note.problem = message; }).LoadOnce();
  return {note};
}
