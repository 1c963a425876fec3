#include "image/readers.h"

#include <algorithm>
#include <cctype>

#include "image/intel_hex.h"
#include "platform/files.h"

namespace loadfile {
namespace {

constexpr std::size_t kLargestBinary = 65536;
/// Far above any HEX text of a 64 KiB image (one byte a record: 1 MiB); keeps a wrong file from
/// filling the memory.
constexpr std::size_t kLargestHex = 64U << 20;

bool Read(const std::string& name, FileKind kind, const ReadTarget& target, FileView& view) {
  const ImageFile file(name, kind, target.cells.size() - 1);
  if (file.Refused()) {
    file.Refuse(view);
    return false;
  }
  file.StoreInto(target, view);
  return true;
}

}  // namespace

FileKind KindOf(std::string_view name, std::string_view hexEnding) {
  std::string ending(name.substr(name.size() - std::min(name.size(), hexEnding.size())));
  for (char& c : ending) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return ending == hexEnding ? FileKind::Hex : FileKind::Binary;
}

ImageFile::ImageFile(const std::string& name, FileKind kind, std::size_t lastCell) : kind_(kind) {
  FileContent file = ReadFile(name, kind == FileKind::Hex ? kLargestHex : kLargestBinary);
  bytes_ = std::move(file.bytes);
  if (!file.Ok() && !(kind == FileKind::Binary && file.missing)) {
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
  if (bytes_.size() < kLargestBinary) target.cells[bytes_.size()] = 0xFF;
  target.maximum = static_cast<std::int32_t>(bytes_.size()) - 1;
}

bool ReadHexFile(const std::string& name, tongxun::CodeBuffers& buffers, FileView& view) {
  return Read(name, FileKind::Hex, {buffers.CodeBuffer, buffers.CodeMax}, view);
}

bool ReadBinFile(const std::string& name, tongxun::CodeBuffers& buffers, FileView& view) {
  return Read(name, FileKind::Binary, {buffers.CodeBuffer, buffers.CodeMax}, view);
}

bool ReadRtdHexFile(const std::string& name, tongxun::CodeBuffers& buffers, FileView& view) {
  return Read(name, FileKind::Hex, {buffers.RtdLoadBuffer, buffers.RtdLoadMax}, view);
}

bool ReadRtdBinFile(const std::string& name, tongxun::CodeBuffers& buffers, FileView& view) {
  return Read(name, FileKind::Binary, {buffers.RtdLoadBuffer, buffers.RtdLoadMax}, view);
}

}  // namespace loadfile
