#include "platform/directories.h"

#include <limits>

#include "platform/files.h"

namespace fs = std::filesystem;

namespace {

Status CopyMissing(const fs::path& from, const fs::path& to) {
  if (!fs::is_directory(from)) return {};
  for (const auto& entry : fs::recursive_directory_iterator(from)) {
    const fs::path copy = to / entry.path().lexically_relative(from);
    if (!entry.is_regular_file() || fs::exists(copy)) continue;
    auto content = ReadFile(entry.path(), std::numeric_limits<std::size_t>::max());
    if (!content.Ok()) return content;
    if (Status copied = ReplaceFile(copy, *content); !copied.Ok()) return copied;
  }
  return {};
}

}  // namespace

void FillProgramFolder(const Directories& directories, const Problem& report) {
  const fs::path initial = directories.programFolder / "Initial";
  Status filled;
  try {
    filled = CopyMissing(directories.deliveredFolder, directories.programFolder);
    fs::create_directories(initial);
    if (filled.Ok()) filled = CanReplace(initial / "writable");
  } catch (const fs::filesystem_error& failure) {
    filled = Status::Failed(ErrorText(failure.code()));
  }
  if (filled.Ok()) return;
  report("The program's folder cannot be written: " + PathText(initial) + " (" + filled.Reason() +
         "). The program works with the files that are there, and cannot keep security codes. "
         "Make the folder writable and start the program again.");
}
