#include <cstdlib>
#include <system_error>

#include "platform/directories.h"

namespace fs = std::filesystem;

namespace {

fs::path ConfigHome() {
  if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg != nullptr && *xdg == '/') return xdg;
  if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') {
    return fs::path(home) / ".config";
  }
  return ".config";
}

fs::path ProgramFolder() {
  std::error_code unreadable;
  const fs::path program = fs::read_symlink("/proc/self/exe", unreadable);
  return unreadable ? fs::current_path(unreadable) : program.parent_path();
}

}  // namespace

Directories SystemDirectories(std::string_view programName) {
  return {.programFolder = ProgramFolder(), .portAddressFolder = ConfigHome() / programName};
}
