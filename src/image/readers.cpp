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

}  // namespace

FileKind KindOf(std::string_view name, std::string_view hexEnding) {
  const std::string_view ending =
      name.substr(name.size() - std::min(name.size(), hexEnding.size()));
  return UpperCase(ending) == hexEnding ? FileKind::Hex : FileKind::Binary;
}

ImageFile::ImageFile(const std::string& name, FileKind kind, std::size_t lastCell, Missing missing)
    : kind_(kind) {
  const std::size_t largestBinary = std::min(kLargestBinary, lastCell + 1);
  FileContent file = ReadFile(PathOf(name), kind == FileKind::Hex ? kLargestHex : largestBinary);
  bytes_ = std::move(file.bytes);
  const bool readsAsEmpty = kind == FileKind::Binary && file.missing && missing == Missing::Empty;
  if (!file.Ok() && !readsAsEmpty) {
    problem_ = name + ": " + file.problem;
    return;
  }
  if (kind == FileKind::Binary || bytes_.empty()) return;
  if (const auto problem = CheckHex(bytes_, static_cast<std::int32_t>(lastCell))) {
    problem_ = name + "\n" + *problem;
  }
}

void ImageFile::Refuse(FileView& view) const {
  view.Beep();
  view.Beep();
  view.ShowMessage("path or file name error!!!", problem_);
}

void ImageFile::StoreInto(const ReadTarget& target, FileView& view) const {
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

bool ReadImage(const std::string& name, FileKind kind, const ReadTarget& target, FileView& view) {
  const ImageFile file(name, kind, target.cells.size() - 1);
  if (file.Refused()) {
    file.Refuse(view);
    return false;
  }
  view.ClearPrintedLines();
  file.StoreInto(target, view);
  return true;
}

}  // namespace loadfile
