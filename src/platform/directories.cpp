#include "platform/directories.h"

#include <cerrno>
#include <fstream>
#include <system_error>

#include "platform/files.h"

namespace fs = std::filesystem;

namespace {

/// Under another name first, so that a copy that was cut short is never taken for the file.
void CopyWhole(const fs::path& from, const fs::path& to) {
  fs::path part = to;
  part += ".part";
  fs::create_directories(to.parent_path());
  fs::copy_file(from, part, fs::copy_options::overwrite_existing);
  fs::rename(part, to);
}

void CopyMissing(const fs::path& from, const fs::path& to) {
  if (!fs::is_directory(from)) return;
  for (const auto& entry : fs::recursive_directory_iterator(from)) {
    const fs::path copy = to / entry.path().lexically_relative(from);
    if (entry.is_regular_file() && !fs::exists(copy)) CopyWhole(entry.path(), copy);
  }
}

void TryWriting(const fs::path& folder) {
  const fs::path probe = folder / "writable.part";
  errno = 0;
  if (!std::ofstream(probe)) throw fs::filesystem_error("", {errno, std::generic_category()});
  fs::remove(probe);
}

}  // namespace

void FillProgramFolder(const Directories& directories, const Problem& report) {
  const fs::path initial = directories.programFolder / "Initial";
  try {
    CopyMissing(directories.deliveredFolder, directories.programFolder);
    fs::create_directories(initial);
    TryWriting(initial);
  } catch (const fs::filesystem_error& failure) {
    report("The program's folder cannot be written: " + PathText(initial) + " (" +
           ErrorText(failure.code()) +
           "). The program works with the files that are there, and cannot keep security codes. "
           "Make the folder writable and start the program again.");
  }
}
