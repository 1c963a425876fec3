#include "image/loaded_file.h"

#include <algorithm>

#include "platform/files.h"

namespace loadfile {

bool HasChanged(const LoadedFile& file) {
  const Result<std::string> now = ReadFile(PathOf(file.name), file.looked);
  return now.Ok() && ContentHash(*now) != file.content;
}

bool AgreedTo(std::span<const LoadedFile> files, WriterView& view) {
  return std::ranges::all_of(files, [&](const LoadedFile& file) {
    return !HasChanged(file) ||
           view.Confirm(file.name + " has changed since it was loaded. Program what was loaded?");
  });
}

}  // namespace loadfile
