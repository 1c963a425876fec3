#include "image/load_notes.h"

#include <algorithm>
#include <optional>

#include "image/hex_fault.h"
#include "text/hex_text.h"

namespace loadfile {
namespace {

/// In either case, as the digits are of the fields that no load looks at.
constexpr int DigitOfEitherCase(char c) {
  return HexDigit(c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c);
}

std::optional<std::uint32_t> ByteAt(std::string_view text, std::size_t at) {
  const int high = DigitOfEitherCase(text[at]);
  const int low = DigitOfEitherCase(text[at + 1]);
  if (high == kNoHexDigit || low == kNoHexDigit) return std::nullopt;
  return static_cast<std::uint32_t>(high * 16 + low);
}

/// All bytes of a record, its checksum included, add up to 0.
bool ChecksumHolds(std::string_view text, const HexRecord& record) {
  const auto type = ByteAt(text, record.Type());
  const auto checksum = ByteAt(text, record.Checksum());
  if (!type || !checksum) return false;
  const auto address = static_cast<std::uint32_t>(record.address);
  std::uint32_t sum = static_cast<std::uint32_t>(record.count) + address / 256 + address + *type;
  const char* digits = text.data() + record.Data();
  for (std::size_t i = 0; i < record.count; ++i) sum += KnownHexByte(digits + 2 * i);
  return (sum + *checksum) % 256 == 0;
}

/// "3 lines .., the first is line 12"
std::string Lines(const NotedLines& lines, const std::string& what) {
  const bool one = lines.count == 1;
  return "- " + std::to_string(lines.count) + (one ? " line " : " lines ") + what +
         (one ? ": line " : ", the first is line ") + std::to_string(lines.first) + ". ";
}

std::string StoredAsData(const NotedLines& lines) {
  return "Stored as data at " + PaddedHex(lines.address, 4);
}

}  // namespace

void HexNoteTaker::LookAt(const HexRecord& record) {
  if (text_[record.at] != ':') ++notes_.wrongStartCodes;
  if (!ChecksumHolds(text_, record)) Note(record, notes_.wrongChecksums);
  notes_.dataBytes += record.count;
  if (record.count == 0) return;
  const auto type = ByteAt(text_, record.Type());
  if (type == 0U) {
    if (Overwrites(record)) Note(record, notes_.overwrites);
  } else {
    Note(record, type == 2U || type == 4U ? notes_.addressRecords : notes_.otherRecords);
  }
}

void HexNoteTaker::Note(const HexRecord& record, NotedLines& lines) const {
  if (lines.count++ > 0) return;
  lines.first = LineNumber(text_, record.at);
  lines.address = record.address;
}

bool HexNoteTaker::Overwrites(const HexRecord& record) {
  constexpr char kFilled = 1;
  const auto first = static_cast<std::size_t>(record.address);
  if (first >= filled_.size()) {  // as in nearly every file
    filled_.resize(first);
    filled_.append(record.count, kFilled);
    return false;
  }
  filled_.resize(std::max(filled_.size(), first + record.count));
  const std::string_view cells(filled_.data() + first, record.count);
  const bool overwrites = cells.find(kFilled) != std::string_view::npos;
  filled_.replace(first, record.count, record.count, kFilled);
  return overwrites;
}

std::string Explain(const LoadNotes& notes) {
  std::string text;
  const auto tell = [&](const NotedLines& lines, const char* what, const std::string& cure) {
    if (lines.count > 0) text += Lines(lines, what) + cure + "\n";
  };
  tell(notes.wrongChecksums, "with a wrong checksum",
       "The file is damaged or was edited by hand: fetch it or build it again.");
  tell(notes.addressRecords, "with an extended address (type 02 or 04)",
       StoredAsData(notes.addressRecords) +
           ", and all addresses are folded into 64 KiB: convert the file to 16-bit addresses.");
  tell(notes.otherRecords, "of another type than data, such as a start address (03 or 05)",
       StoredAsData(notes.otherRecords) + ": make the file without such lines.");
  tell(notes.overwrites, "with data where data of an earlier line stands",
       "The later data was taken: build the file again from parts that do not overlap.");
  if (notes.taken > 0) {
    text += "- The file is longer than what is taken of it, the first " +
            std::to_string(notes.taken) + " bytes. Is it the right one?\n";
  }
  return text;
}

}  // namespace loadfile
