#include "image/readers.h"

#include <algorithm>
#include <utility>

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

Result<LoadNotes> TakeAnything(std::string_view bytes, std::int32_t /*lastCell*/) {
  return LoadNotes{.dataBytes = bytes.size()};
}

std::int32_t StoreBinary(std::string_view bytes, std::span<std::uint8_t> cells) {
  std::copy(bytes.begin(), bytes.end(), cells.begin());
  if (bytes.size() < std::min(kLargestBinary, cells.size())) cells[bytes.size()] = 0xFF;
  return static_cast<std::int32_t>(bytes.size()) - 1;
}

}  // namespace

const Format kHex{.isText = true, .largest = kLargestHex, .check = CheckHex, .store = StoreHex};
const Format kBinary{
    .isText = false, .largest = kLargestBinary, .check = TakeAnything, .store = StoreBinary};

bool IsShown(std::string_view name, Formats formats) {
  return std::ranges::any_of(formats, [&](const FormatRow& each) {
    return UpperCase(name).ends_with("." + std::string(each.ending));
  });
}

const Format& FormatOf(std::string_view name, Formats formats) {
  const auto row = std::ranges::find_if(
      formats, [&](const FormatRow& each) { return UpperCase(name).ends_with(each.ending); });
  return *(row == formats.end() ? formats.back() : *row).format;
}

ImageFile::ImageFile(const std::string& name, const Format& format, std::size_t lastCell,
                     Missing missing)
    : format_(format) {
  const std::size_t limit = format.isText ? format.largest : std::min(format.largest, lastCell + 1);
  const std::size_t looked = limit + 1;  // one byte more tells a file that is longer
  Result<std::string> file = ReadFile(PathOf(name), looked);
  bytes_ = std::move(*file);
  loaded_ = {.name = name, .looked = looked, .content = ContentHash(bytes_)};
  const bool readsAsEmpty = !format.isText && file.IsMissing() && missing == Missing::Empty;
  if (!file.Ok() && !readsAsEmpty) {
    status_ = Status::Failed(name + ": " + file.Reason());
    return;
  }
  const bool longer = bytes_.size() > limit;
  if (longer && format.isText) {
    status_ = Status::Failed(name + ": " + kTooLarge);
    return;
  }
  bytes_.resize(std::min(bytes_.size(), limit));
  if (bytes_.empty()) return;
  const Result<LoadNotes> check = format.check(bytes_, static_cast<std::int32_t>(lastCell));
  if (!check.Ok()) status_ = Status::Failed(name + "\n" + check.Reason());
  notes_ = *check;
  if (longer) notes_.taken = limit;
}

Status ImageFile::Refuse(WriterView& view) const {
  Status refused = Status::Failed("path or file name error!!!", status_.Reason());
  view.Beep();
  view.Beep();
  view.ShowMessage(refused.Reason(), refused.Cause());
  return refused;
}

void ImageFile::StoreInto(const ReadTarget& target, WriterView& view) const {
  if (format_.isText && bytes_.empty()) return static_cast<void>(Refuse(view));
  target.maximum = format_.store(bytes_, target.cells);
  for (std::size_t i = 0; i < notes_.wrongStartCodes; ++i) view.PrintLine("error!!!");
}

TakenFile ImageFile::Taken() const {
  std::string notes = Explain(notes_);
  if (!notes.empty()) notes = "\n" + loaded_.name + "\n" + notes;
  const bool emptyText = format_.isText && bytes_.empty();
  return {loaded_, notes_.dataBytes, notes_.wrongStartCodes, emptyText ? 1U : 0U, notes};
}

std::string TellNotes(const std::string& notes, WriterView& view) {
  if (notes.empty()) return {};
  std::string told = "Loaded as it is, but hardly as it was meant. Before you program:\n" + notes;
  view.ShowNotes(told);
  return told;
}

Result<TakenFile> ReadImage(const std::string& name, const Format& format, const ReadTarget& target,
                            WriterView& view) {
  const ImageFile file(name, format, target.cells.size() - 1);
  if (!file.Ok()) return file.Refuse(view);
  view.ClearPrintedLines();
  file.StoreInto(target, view);
  TakenFile taken = file.Taken();
  taken.notes = TellNotes(taken.notes, view);
  return taken;
}

}  // namespace loadfile
