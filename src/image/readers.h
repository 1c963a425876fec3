// Reads firmware files: Intel HEX and raw binary. Names no chip and no buffer.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "image/load_notes.h"
#include "image/loaded_file.h"
#include "image/writer_view.h"

namespace loadfile {

/// Where a reader puts an image: a code buffer and its maximum address.
struct ReadTarget {
  std::span<std::uint8_t> cells;
  std::int32_t& maximum;
};

enum class FileKind { Hex, Binary };

/// The filter list for an image in one file.
inline constexpr std::string_view kOneFileFilters = "Hexfile (*.hex)|*.hex|Binfile (*.bin)|*.bin";

/// Whether a file of this name is one of those that a filter list shows, in either case.
bool IsShown(std::string_view name, std::string_view filters);

/// Hex when the last three characters of the name, in upper case, are `hexEnding`.
FileKind KindOf(std::string_view name, std::string_view hexEnding);

/// What a binary file that does not exist is.
enum class Missing { Refused, Empty };

/// One image file, read and checked, not yet stored anywhere.
class ImageFile {
 public:
  /// `lastCell`: the highest address that the target holds.
  ImageFile(const std::string& name, FileKind kind, std::size_t lastCell,
            Missing missing = Missing::Refused);

  bool Refused() const { return !problem_.empty(); }
  /// Two beeps and the message that says why this file cannot be loaded.
  void Refuse(WriterView& view) const;

  /// Stores a file that was not refused. An empty HEX file sounds two beeps, shows a message and
  /// leaves the target as it was.
  void StoreInto(const ReadTarget& target, WriterView& view) const;

  /// Its name and what is to be told of it; empty for nothing.
  std::string Notes() const;
  const LoadedFile& Loaded() const { return loaded_; }

 private:
  void StoreBinary(const ReadTarget& target) const;

  FileKind kind_;
  LoadedFile loaded_;
  std::string bytes_;
  std::string problem_;
  LoadNotes notes_;
};

/// Shows the notes of the files that were loaded, unless there are none.
void TellNotes(const std::string& notes, WriterView& view);

/// Reads one file into `target`, whose last cell is the highest address that it holds, and tells
/// its notes. Nothing when the file was refused; nothing has changed then.
std::optional<LoadedFile> ReadImage(const std::string& name, FileKind kind,
                                    const ReadTarget& target, WriterView& view);

}  // namespace loadfile
