#include "terminal/arguments.h"

#include <io.h>
#include <shellapi.h>
#include <windows.h>

#include <cstdio>
#include <filesystem>

#include "platform/files.h"

namespace terminal {

// Those of `main` are in the system's ANSI code page, which not every file name fits into.
std::vector<std::string> Arguments(int /*argc*/, char** /*argv*/) {
  int count = 0;
  LPWSTR* wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(PathText(std::filesystem::path(wide[i])));
  LocalFree(wide);
  return arguments;
}

/// A console that can take lines back; older ones cannot.
bool ErrIsTerminal() {
  DWORD mode = 0;
  const HANDLE console = GetStdHandle(STD_ERROR_HANDLE);
  return GetConsoleMode(console, &mode) != 0 &&
         SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

}  // namespace terminal
