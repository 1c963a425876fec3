// Where the program finds its installation data and keeps settings and log.
#pragma once

#include <filesystem>
#include <string_view>

#include "platform/problem.h"

struct Directories {
  /// The program's own folder; "Initial" with the board table stands in it.
  std::filesystem::path programFolder;
  /// Where settings are kept: the folder of "chipport.log".
  std::filesystem::path settingsFolder;
  /// The installation's folder, from which the program's folder is filled; empty when the program's
  /// folder came with the program itself.
  std::filesystem::path deliveredFolder = {};
  /// The folder that holds the log of runs; empty for no log.
  std::filesystem::path stateFolder = {};
};

/// The directories of this machine for a program called `programName`; creates none. An
/// installation of it that has a name of its own is `deliveredName`.
/// A program that has "Initial" beside it (an unpacked archive, a build tree) has its folder there.
/// On Linux one without (an installed package) has `$XDG_DATA_HOME/<programName>`, else
/// `~/.local/share/<programName>`, filled from `../share/<deliveredName>` as seen from the program;
/// and "chipport.log" lives in `$XDG_CONFIG_HOME/<programName>`, else in `~/.config/<programName>`.
/// The log of runs lives in `$XDG_STATE_HOME/<programName>`, else in
/// `~/.local/state/<programName>`, and on Windows in `%LOCALAPPDATA%/<programName>`.
Directories SystemDirectories(std::string_view programName, std::string_view deliveredName);
inline Directories SystemDirectories(std::string_view programName) {
  return SystemDirectories(programName, programName);
}

/// Copies every delivered file that is not there yet into the program's folder, and never touches
/// one that is. `report` is told, once, when the folder cannot be written; the program can run on.
void FillProgramFolder(const Directories& directories, const Problem& report);
