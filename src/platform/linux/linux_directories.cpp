#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <system_error>

#include "platform/directories.h"

namespace fs = std::filesystem;

namespace {

/// The folder that the environment names, which must be an absolute path, else the one in the
/// operator's home folder.
fs::path Home(const char* variable, const char* usual) {
  if (const char* named = std::getenv(variable); named != nullptr && *named == '/') return named;
  if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') {
    return fs::path(home) / usual;
  }
  const passwd* user = getpwuid(geteuid());  // a service has no HOME
  return (user != nullptr ? fs::path(user->pw_dir) : fs::path("/")) / usual;
}

fs::path ExecutableFolder() {
  std::error_code unreadable;
  const fs::path program = fs::read_symlink("/proc/self/exe", unreadable);
  return unreadable ? fs::current_path(unreadable) : program.parent_path();
}

}  // namespace

Directories SystemDirectories(std::string_view programName, std::string_view deliveredName) {
  const fs::path beside = ExecutableFolder();
  const fs::path config = Home("XDG_CONFIG_HOME", ".config") / programName;
  std::error_code missing;
  const fs::path state = Home("XDG_STATE_HOME", ".local/state") / programName;
  if (fs::is_directory(beside / "Initial", missing)) return {beside, config, {}, state};
  return {.programFolder = Home("XDG_DATA_HOME", ".local/share") / programName,
          .settingsFolder = config,
          .deliveredFolder = beside.parent_path() / "share" / deliveredName,
          .stateFolder = state};
}
