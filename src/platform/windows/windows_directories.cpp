#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cwctype>

#include "platform/directories.h"
#include "text/hex_text.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kLongestPath = 32768;  // characters, the system's own limit, NUL included

fs::path ProgramFolder() {
  std::wstring program(kLongestPath, L'\0');
  program.resize(GetModuleFileNameW(nullptr, program.data(), kLongestPath));
  return fs::path(program).parent_path();
}

/// Text in the system's ANSI code page as wide characters, which a path takes as they are.
std::wstring Widen(const std::string& text) {
  const int length = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  const int used = MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), length);
  wide.resize(static_cast<std::size_t>(used));
  return wide;
}

fs::path WindowsFolderInLowerCase() {
  std::array<char, 260> buffer{};
  GetWindowsDirectoryA(buffer.data(), static_cast<UINT>(buffer.size()));
  std::wstring folder = Widen(std::string(CutAtNul({buffer.data(), buffer.size()})));
  std::transform(folder.begin(), folder.end(), folder.begin(),
                 [](wchar_t c) { return static_cast<wchar_t>(std::towlower(c)); });
  return folder;
}

}  // namespace

Directories SystemDirectories(std::string_view programName, std::string_view /*deliveredName*/) {
  const wchar_t* local = _wgetenv(L"LOCALAPPDATA");
  return {.programFolder = ProgramFolder(),
          .settingsFolder = WindowsFolderInLowerCase(),
          .stateFolder = local == nullptr ? fs::path() : fs::path(local) / programName};
}
