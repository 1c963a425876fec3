// Why a job is refused or fails, in words that both chip families' jobs use.
#pragma once

#include <string>
#include <vector>

#include "image/readers.h"
#include "terminal/outcome.h"
#include "text/hex_text.h"

namespace terminal {

inline constexpr const char* kSilent = "the chip did not answer";
inline constexpr const char* kNoByte = ": the file holds no byte of an image";

/// Fails for a name that no filter of the windows' file dialog shows: a HEX text under another name
/// would be taken as the bytes of a binary file.
inline Status NameIsKnown(const std::string& file, loadfile::Formats formats) {
  if (loadfile::IsShown(file, formats)) return {};
  std::vector<std::string> endings;
  for (const loadfile::FormatRow& row : formats) endings.push_back("." + std::string(row.ending));
  return Status::Failed(file + ": the name of a firmware file for this chip ends in " +
                        Joined(endings, " or "));
}

/// The reason, and what is behind it on a line of its own.
inline std::string ReasonText(const Status& status) {
  return status.Reason() + (status.Cause().empty() ? "" : "\n" + status.Cause());
}

/// The file is somebody else's at work.
inline void RefuseChanged(Outcome& outcome) {
  outcome.status = kBadFile;
  outcome.failure = "the file has changed since it was loaded: start again when it is at rest";
}

}  // namespace terminal
