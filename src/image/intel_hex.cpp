#include "image/intel_hex.h"

#include <algorithm>
#include <array>

#include "image/hex_number.h"

namespace loadfile {
namespace {

constexpr std::size_t kEndOfFileMargin = 14;  // characters; the end-of-file record has 13
constexpr std::size_t kHeadLength = 9;        // start code, byte count, address, type
constexpr std::size_t kTailLength = 4;        // checksum, line end
constexpr int kNoDigit = -1;
constexpr std::string_view kDigits = "0123456789ABCDEF";  // upper case only

constexpr std::array<int, 256> DigitTable() {
  std::array<int, 256> table{};
  table.fill(kNoDigit);
  for (std::size_t i = 0; i < kDigits.size(); ++i) {
    table[static_cast<unsigned char>(kDigits[i])] = static_cast<int>(i);
  }
  return table;
}

constexpr auto kDigitValue = DigitTable();

/// Value of two digits; negative when one of them is none.
int ByteAt(std::string_view text, std::size_t at) {
  const int high = kDigitValue[static_cast<unsigned char>(text[at])];
  const int low = kDigitValue[static_cast<unsigned char>(text[at + 1])];
  return (high | low) < 0 ? kNoDigit : high * 16 + low;
}

bool IsLineBreak(char c) { return c == '\r' || c == '\n'; }

std::string Shown(char c) {
  if (c == '\r') return "a carriage return";
  if (c == '\n') return "a line feed";
  if (c >= ' ' && c <= '~') return std::string("\"") + c + "\"";
  return "the character 0x" + fileop::HexByte(static_cast<unsigned char>(c));
}

std::string Place(std::string_view text, std::size_t at) {
  const std::string_view before = text.substr(0, at);
  const auto line = 1 + std::count(before.begin(), before.end(), '\n');
  const std::size_t lineStart = before.rfind('\n') + 1;  // npos + 1 is 0: the first line
  return "line " + std::to_string(line) + ", column " + std::to_string(at - lineStart + 1) + ": ";
}

constexpr const char* kLineEndAdvice =
    "convert the file to line ends of carriage return and line feed, for example with unix2dos";

HexProblem Cut(std::string_view text) {
  const bool lineFeedsOnly = text.find('\n') != text.npos && text.find('\r') == text.npos;
  return Place(text, text.size()) + "the file ends inside a record, expected the rest of it" +
         (lineFeedsOnly ? std::string("; ") + kLineEndAdvice : std::string());
}

/// The problem of a digit field of `count` characters that does not hold only digits.
HexProblem WrongDigit(std::string_view text, std::size_t at) {
  while (kDigitValue[static_cast<unsigned char>(text[at])] != kNoDigit) ++at;
  std::string problem =
      Place(text, at) + "found " + Shown(text[at]) + ", expected a digit 0-9 or A-F";
  if (text[at] >= 'a' && text[at] <= 'f') problem += " (upper case)";
  return problem;
}

/// Reads the record at `at`: checks it when `cells` is null, else stores it. Advances `at` behind
/// the record.
template <bool store>
std::optional<HexProblem> Record(std::string_view text, std::size_t& at, std::int32_t lastCell,
                                 std::uint8_t* cells, HexSummary& summary) {
  if (text.size() - at < kHeadLength) return Cut(text);
  const int count = ByteAt(text, at + 1);
  const int addressHigh = ByteAt(text, at + 3);
  const int addressLow = ByteAt(text, at + 5);
  if (!store && (count | addressHigh | addressLow) < 0) return WrongDigit(text, at + 1);

  const auto bytes = static_cast<std::size_t>(count);
  if (!store && text.size() - at < kHeadLength + 2 * bytes + kTailLength) return Cut(text);
  const std::int32_t address = addressHigh * 256 + addressLow;
  const std::int32_t last = address + count - 1;
  if (!store && last > lastCell) {
    return Place(text, at + 1) + "found a record that reaches address 0x" + HexText(last) +
           ", expected none above 0x" + HexText(lastCell);
  }

  std::size_t next = at + kHeadLength;
  for (std::size_t i = 0; i < bytes; ++i, next += 2) {
    const int byte = ByteAt(text, next);
    if (!store && byte < 0) return WrongDigit(text, next);
    if (store) cells[static_cast<std::size_t>(address) + i] = static_cast<std::uint8_t>(byte);
  }

  const std::size_t lineEnd = next + kTailLength - 2;
  if (!store && IsLineBreak(text[lineEnd]) && !IsLineBreak(text[lineEnd + 1])) {
    return Place(text, lineEnd + 1) + "found " + Shown(text[lineEnd + 1]) +
           ", expected a carriage return or a line feed; " + kLineEndAdvice;
  }
  if (text[at] != ':') ++summary.wrongStartCodes;
  summary.maximum = std::max(summary.maximum, last);
  at = lineEnd + 2;
  return std::nullopt;
}

template <bool store>
std::optional<HexProblem> Records(std::string_view text, std::int32_t lastCell, std::uint8_t* cells,
                                  HexSummary& summary) {
  std::size_t at = 0;
  do {
    if (auto problem = Record<store>(text, at, lastCell, cells, summary)) return problem;
  } while (at + kEndOfFileMargin <= text.size());
  return std::nullopt;
}

}  // namespace

std::optional<HexProblem> CheckHex(std::string_view text, std::int32_t lastCell) {
  HexSummary ignored;
  return Records<false>(text, lastCell, nullptr, ignored);
}

HexSummary StoreHex(std::string_view text, std::span<std::uint8_t> cells) {
  HexSummary summary;
  Records<true>(text, 0, cells.data(), summary);
  return summary;
}

}  // namespace loadfile
