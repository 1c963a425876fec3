#include "image/intel_hex.h"

#include <algorithm>
#include <optional>

#include "image/hex_fault.h"
#include "image/hex_record.h"

namespace loadfile {
namespace {

constexpr std::size_t kEndOfFileMargin = 14;  // characters; the end-of-file record has 13

/// Calls `handle` for each record; ends at the first one for which it returns a fault.
template <typename Handle>
std::optional<HexFault> ForEachRecord(std::string_view text, Handle handle) {
  std::size_t at = 0;
  do {
    const HexRecord record(text, at);
    if (const std::optional<HexFault> fault = handle(record)) return fault;
    at = record.End();
  } while (at + kEndOfFileMargin <= text.size());
  return {};
}

/// 0-9 and A-F only: without a table and without a branch, so that a processor takes many at a
/// time.
bool AllDigits(std::string_view text) {
  unsigned wrong = 0;
  for (const char c : text) {
    const auto fromZero = static_cast<unsigned char>(c - '0');
    const auto fromA = static_cast<unsigned char>(c - 'A');
    wrong |= static_cast<unsigned>(fromZero > 9) & static_cast<unsigned>(fromA > 5);
  }
  return wrong == 0;
}

/// Where the first of `count` characters stands that is no digit; `count` when all are.
std::size_t FirstWrongDigit(std::string_view text, std::size_t at, std::size_t count) {
  if (AllDigits(text.substr(at, count))) return count;
  std::size_t i = 0;
  while (i < count && HexDigit(text[at + i]) != kNoHexDigit) ++i;
  return i;
}

std::optional<HexFault> CheckRecord(std::string_view text, const HexRecord& record,
                                    std::int32_t lastCell) {
  using Kind = HexFault::Kind;
  const auto fault = [&](Kind kind, std::size_t at) { return HexFault{kind, record.at, at}; };

  constexpr std::size_t kNumbers = 6;  // byte count and address
  if (text.size() - record.at < HexRecord::kHead) return fault(Kind::Cut, text.size());
  const std::size_t inHead = FirstWrongDigit(text, record.at + 1, kNumbers);
  if (inHead < kNumbers) return fault(Kind::Digit, record.at + 1 + inHead);
  if (text.size() < record.End()) return fault(Kind::Cut, text.size());
  if (record.Last() > lastCell) return fault(Kind::Address, record.at);

  const std::size_t digits = 2 * record.count;
  const std::size_t inData = FirstWrongDigit(text, record.Data(), digits);
  if (inData < digits) return fault(Kind::Digit, record.Data() + inData);

  const auto isLineBreak = [&](std::size_t at) { return text[at] == '\r' || text[at] == '\n'; };
  const std::size_t lineEnd = record.LineEnd();
  if (isLineBreak(lineEnd) && !isLineBreak(lineEnd + 1)) return fault(Kind::LineEnd, lineEnd);
  return {};
}

/// An end-of-file record, which may be cut off; not so early that it may as well be one of data.
bool IsEndOfFile(std::string_view text) {
  constexpr std::string_view kRecord = ":00aaaa01cc";  // a letter stands for any digit
  constexpr std::size_t kCountKnown = 3;               // characters
  if (text.size() < kCountKnown || text.size() > kRecord.size()) return false;
  const std::string upper = UpperCase(text);
  return std::equal(upper.begin(), upper.end(), kRecord.begin(), [](char c, char expected) {
    return expected >= 'a' ? HexDigit(c) != kNoHexDigit : c == expected;
  });
}

/// Looks behind the last record that is read, where no data may be lost.
std::optional<HexFault> CheckRest(std::string_view text, std::size_t at) {
  const std::string_view rest = Trim(text.substr(at), " \t\r\n\x1A");
  if (rest.empty() || IsEndOfFile(rest)) return {};
  const auto end = static_cast<std::size_t>(rest.data() + rest.size() - text.data());
  return HexFault{HexFault::Kind::Cut, at, end};
}

}  // namespace

Result<LoadNotes> CheckHex(std::string_view text, std::int32_t lastCell) {
  HexNoteTaker noteTaker(text, lastCell);
  std::size_t read = 0;
  auto fault = ForEachRecord(text, [&](const HexRecord& record) {
    const auto found = CheckRecord(text, record, lastCell);
    if (found) return found;
    noteTaker.LookAt(record);
    read = record.End();
    return found;
  });
  if (!fault) fault = CheckRest(text, read);
  if (fault) return Status::Failed(Explain(*fault, text, lastCell));
  return noteTaker.Notes();
}

std::int32_t StoreHex(std::string_view text, std::span<std::uint8_t> cells) {
  std::int32_t maximum = 0;
  ForEachRecord(text, [&](const HexRecord& record) {
    std::uint8_t* cell = cells.data() + record.address;
    const char* digits = text.data() + record.Data();
    for (std::size_t i = 0; i < record.count; ++i) cell[i] = KnownHexByte(digits + 2 * i);
    maximum = std::max(maximum, record.Last());
    return std::optional<HexFault>();
  });
  return maximum;
}

}  // namespace loadfile
