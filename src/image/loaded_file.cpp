#include "image/loaded_file.h"

#include <algorithm>

#include "platform/files.h"

namespace loadfile {

std::uint64_t ContentHash(std::string_view bytes) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
  return hash;
}

bool HasChanged(const LoadedFile& file) {
  const Result<std::string> now = ReadFile(PathOf(file.name), file.looked);
  return now.Ok() && ContentHash(*now) != file.content;
}

bool AgreedTo(std::span<const LoadedFile> files,
              const std::function<bool(std::string_view)>& confirm) {
  return std::ranges::all_of(files, [&](const LoadedFile& file) {
    return !HasChanged(file) ||
           confirm(file.name + " has changed since it was loaded. Program what was loaded?");
  });
}

}  // namespace loadfile
