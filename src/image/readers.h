// Reads firmware files: Intel HEX and raw binary. Names no chip and no buffer.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "image/intel_hex.h"
#include "image/load_notes.h"
#include "image/loaded_file.h"
#include "image/writer_view.h"

namespace loadfile {

/// Where a reader puts an image: a code buffer and its maximum address.
struct ReadTarget {
  std::span<std::uint8_t> cells;
  std::int32_t& maximum;
};

/// A format of firmware files.
struct Format {
  bool isText;          // never cut, and no image when it is empty
  std::size_t largest;  // bytes: of more, a text is refused, and any other file is cut
  /// Of what is not empty.
  Result<LoadNotes> (*check)(std::string_view bytes, std::int32_t lastCell);
  /// Returns the address of the last byte.
  std::int32_t (*store)(std::string_view bytes, std::span<std::uint8_t> cells);
};

extern const Format kHex;
extern const Format kBinary;

/// The names that a load command takes: those that end so, in either case, are read in the row's
/// format, and all others in the last row's.
struct FormatRow {
  std::string_view ending;  // upper case
  const char* filter;       // of the file dialog
  const Format* format;
};
using Formats = std::span<const FormatRow>;
/// Of an image in one file, and of the first file of a two-bank pair.
inline constexpr std::array<FormatRow, 2> kOneFileFormats{
    {{"HEX", "Hexfile (*.hex)", &kHex}, {"BIN", "Binfile (*.bin)", &kBinary}}};
inline constexpr std::array<FormatRow, 2> kPairFormats{
    {{"H00", "H00file (*.H00)", &kHex}, {"B00", "B00file (*.B00)", &kBinary}}};

const Format& FormatOf(std::string_view name, Formats formats);
/// Whether a filter shows a file of this name, in either case.
bool IsShown(std::string_view name, Formats formats);

/// What a file that does not exist is, unless it is a text: that is refused.
enum class Missing { Refused, Empty };

/// A file that was not refused.
struct TakenFile {
  LoadedFile file = {};
  std::size_t dataBytes = 0;
  std::size_t wrongStartCodes = 0;  // lines
  std::size_t emptyTexts = 0;       // 1 for a text of 0 bytes, which leaves the target as it was
  std::string notes = {};           // what else is odd in it; empty for nothing
};

/// What a load shows of the image that it has loaded.
struct ImageFacts {
  std::string maximumAddress = {};
  std::string checksum = {};
  std::string crc = {};             // empty where the window shows none
  std::size_t dataBytes = 0;        // in the files
  std::size_t wrongStartCodes = 0;  // lines, each told as "error!!!"
  std::size_t emptyTexts = 0;       // files, each told as refused, in whose place the buffer counts
  std::string notes = {};           // as they were told; empty for none
};

/// One image file, read and checked, not yet stored anywhere.
class ImageFile {
 public:
  /// `lastCell`: the highest address that the target holds.
  ImageFile(const std::string& name, const Format& format, std::size_t lastCell,
            Missing missing = Missing::Refused);

  bool Ok() const { return status_.Ok(); }
  /// Two beeps and the message that says why a file cannot be loaded: returned, too.
  Status Refuse(WriterView& view) const;

  /// Stores a file that is `Ok`. An empty text sounds two beeps, shows a message and leaves the
  /// target as it was.
  void StoreInto(const ReadTarget& target, WriterView& view) const;

  TakenFile Taken() const;

 private:
  const Format& format_;
  LoadedFile loaded_;
  std::string bytes_;
  Status status_;
  LoadNotes notes_;
};

/// Shows the notes of the files that were loaded, unless there are none. Returns the whole text.
std::string TellNotes(const std::string& notes, WriterView& view);

/// Reads one file into `target`, whose last cell is the highest address that it holds, and tells
/// its notes: they are returned as they were told. When the file was refused, nothing has changed.
Result<TakenFile> ReadImage(const std::string& name, const Format& format, const ReadTarget& target,
                            WriterView& view);

}  // namespace loadfile
