#include "terminal/arguments.h"

#include <windows.h>

#include <cstdlib>
#include <filesystem>

#include "platform/files.h"

namespace terminal {
namespace {

/// The code page stays the console's when the program has ended: the one before is put back.
class Utf8Console {
 public:
  Utf8Console() { SetConsoleOutputCP(CP_UTF8); }
  ~Utf8Console() {
    if (previous_ != 0) SetConsoleOutputCP(previous_);
  }
  Utf8Console(const Utf8Console&) = delete;
  Utf8Console& operator=(const Utf8Console&) = delete;

 private:
  const UINT previous_ = GetConsoleOutputCP();  // 0 without a console
};

}  // namespace

// Those of `main` are in the system's ANSI code page, which not every file name fits into.
std::vector<std::string> Arguments(int /*argc*/, char** /*argv*/) {
  int count = 0;
  LPWSTR* wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(PathText(std::filesystem::path(wide[i])));
  LocalFree(wide);
  return arguments;
}

std::string EnvironmentText(const char* name) {
  const wchar_t* value = _wgetenv(std::filesystem::path(name).c_str());
  return value == nullptr ? "" : PathText(std::filesystem::path(value));
}

/// A console that can take lines back; older ones cannot.
bool ErrIsTerminal() {
  DWORD mode = 0;
  const HANDLE console = GetStdHandle(STD_ERROR_HANDLE);
  return GetConsoleMode(console, &mode) != 0 &&
         SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

void PrepareStreams() { static const Utf8Console console; }

}  // namespace terminal
