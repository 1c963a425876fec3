// Where the program finds its installation data and keeps its port address.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

struct Directories {
  /// The program's own folder; "Initial" with the board table stands in it.
  std::filesystem::path programFolder;
  /// The folder that holds "chipport.log".
  std::filesystem::path portAddressFolder;
};

/// The directories of this machine for a program called `programName`.
/// On Linux "chipport.log" lives in `$XDG_CONFIG_HOME/<programName>`, else in
/// `~/.config/<programName>`.
Directories SystemDirectories(std::string_view programName);

/// The part before the first NUL character, or the whole text when it holds none.
std::string CutAtNul(std::string_view text);
