#include "image/readers.h"

#include <algorithm>

#include "image/intel_hex.h"
#include "platform/files.h"
#include "text/hex_text.h"

namespace loadfile {
namespace {

constexpr std::size_t kLargestBinary = 65536;
/// Far above any HEX text of a 64 KiB image (one byte a record: 1 MiB); keeps a wrong file from
/// filling the memory.
constexpr std::size_t kLargestHex = 64U << 20;
constexpr const char* kTooLarge =
    "the file is too large: a HEX file of more than 64 MiB is no image for these chips";

}  // namespace

bool IsShown(std::string_view name, std::string_view filters) {
  // Each description ends with its pattern in parentheses, which stands again behind it.
  for (std::size_t at = 0; (at = filters.find("|*", at)) != std::string_view::npos; ++at) {
    const std::string_view ending = filters.substr(at + 2, filters.find('|', at + 2) - at - 2);
    if (UpperCase(name).ends_with(UpperCase(ending))) return true;
  }
  return false;
}

FileKind KindOf(std::string_view name, std::string_view hexEnding) {
  const std::string_view ending =
      name.substr(name.size() - std::min(name.size(), hexEnding.size()));
  return UpperCase(ending) == hexEnding ? FileKind::Hex : FileKind::Binary;
}

ImageFile::ImageFile(const std::string& name, FileKind kind, std::size_t lastCell, Missing missing)
    : kind_(kind) {
  const std::size_t limit =
      kind == FileKind::Hex ? kLargestHex : std::min(kLargestBinary, lastCell + 1);
  const std::size_t looked = limit + 1;  // one byte more tells a file that is longer
  FileContent file = ReadFile(PathOf(name), looked);
  bytes_ = std::move(file.bytes);
  loaded_ = {.name = name, .looked = looked, .content = ContentHash(bytes_)};
  const bool readsAsEmpty = kind == FileKind::Binary && file.missing && missing == Missing::Empty;
  if (!file.Ok() && !readsAsEmpty) {
    problem_ = name + ": " + file.problem;
    return;
  }
  const bool longer = bytes_.size() > limit;
  if (kind == FileKind::Binary) {
    if (longer) notes_.taken = limit;
    bytes_.resize(std::min(bytes_.size(), limit));
  } else if (longer) {
    problem_ = name + ": " + kTooLarge;
  } else if (!bytes_.empty()) {
    HexCheck check = CheckHex(bytes_, static_cast<std::int32_t>(lastCell));
    if (check.problem) problem_ = name + "\n" + *check.problem;
    notes_ = check.notes;
  }
}

void ImageFile::Refuse(WriterView& view) const {
  view.Beep();
  view.Beep();
  view.ShowMessage("path or file name error!!!", problem_);
}

void ImageFile::StoreInto(const ReadTarget& target, WriterView& view) const {
  if (kind_ == FileKind::Binary) return StoreBinary(target);
  if (bytes_.empty()) return Refuse(view);

  const HexSummary summary = StoreHex(bytes_, target.cells);
  target.maximum = summary.maximum;
  for (int i = 0; i < summary.wrongStartCodes; ++i) view.PrintLine("error!!!");
}

void ImageFile::StoreBinary(const ReadTarget& target) const {
  std::copy(bytes_.begin(), bytes_.end(), target.cells.begin());
  const std::size_t mostBytes = std::min(kLargestBinary, target.cells.size());
  if (bytes_.size() < mostBytes) target.cells[bytes_.size()] = 0xFF;
  target.maximum = static_cast<std::int32_t>(bytes_.size()) - 1;
}

std::string ImageFile::Notes() const {
  const std::string notes = Explain(notes_);
  return notes.empty() ? notes : "\n" + loaded_.name + "\n" + notes;
}

void TellNotes(const std::string& notes, WriterView& view) {
  if (notes.empty()) return;
  view.ShowNotes("Loaded as it is, but hardly as it was meant. Before you program:\n" + notes);
}

std::optional<LoadedFile> ReadImage(const std::string& name, FileKind kind,
                                    const ReadTarget& target, WriterView& view) {
  const ImageFile file(name, kind, target.cells.size() - 1);
  if (file.Refused()) {
    file.Refuse(view);
    return std::nullopt;
  }
  view.ClearPrintedLines();
  file.StoreInto(target, view);
  TellNotes(file.Notes(), view);
  return file.Loaded();
}

}  // namespace loadfile
