// A file that an image was loaded from, to be told from what stands under its name later.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "image/writer_view.h"

namespace loadfile {

struct LoadedFile {
  std::string name = {};    // UTF-8
  std::size_t looked = 0;   // most bytes that count
  std::size_t content = 0;  // `ContentHash` of them
};

/// Of no meaning to another build of the program.
inline std::size_t ContentHash(std::string_view bytes) {
  return std::hash<std::string_view>{}(bytes);
}

/// The file can be read and holds something else than when it was loaded.
bool HasChanged(const LoadedFile& file);

/// Asks about each file that has changed, whether what was loaded is to be programmed. False at the
/// first answer that is no.
bool AgreedTo(std::span<const LoadedFile> files, WriterView& view);

}  // namespace loadfile
