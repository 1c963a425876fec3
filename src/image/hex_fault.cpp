#include "image/hex_fault.h"

#include "image/hex_record.h"
#include "text/hex_text.h"

namespace loadfile {
namespace {

constexpr std::string_view kLineBreaks = "\r\n";

std::string Shown(char c) {
  if (c == '\r') return "a carriage return";
  if (c == '\n') return "a line feed";
  if (c == ' ') return "a blank";
  if (c == '\t') return "a tab";
  if (c >= '!' && c <= '~') return std::string("\"") + c + "\"";
  return "the character 0x" + fileop::HexByte(static_cast<unsigned char>(c));
}

struct Position {
  std::size_t line = 1;
  std::size_t lineStart = 0;  // its first character
};

Position PositionOf(std::string_view text, std::size_t at) {
  Position position;
  for (std::size_t i = 0; i < at; ++i) {
    // CR LF ends one line, and so does a CR CR LF.
    const std::string_view behind = text.substr(i + 1, 2);
    const bool endFollows = text[i] == '\r' && (behind.starts_with('\n') || behind == kLineBreaks);
    if (kLineBreaks.find(text[i]) == std::string_view::npos || endFollows) continue;
    ++position.line;
    position.lineStart = i + 1;
  }
  return position;
}

std::string Place(std::string_view text, std::size_t at) {
  const Position position = PositionOf(text, at);
  return "line " + std::to_string(position.line) + ", column " +
         std::to_string(at - position.lineStart + 1) + ": ";
}

/// The beginning of a record that was cut off.
std::string Stump(std::string_view record) {
  constexpr std::size_t kShown = 16;
  std::string shown(record.substr(0, kShown));
  for (char& c : shown) {
    if (c < ' ' || c > '~') c = '.';
  }
  return '"' + shown + (record.size() > kShown ? "..\"" : "\"");
}

/// For a text whose line ends are all of one character: what they are and what mends them.
std::string WrongLineEnds(std::string_view text) {
  const bool carriageReturns = text.find('\r') != std::string_view::npos;
  const bool lineFeeds = text.find('\n') != std::string_view::npos;
  if (carriageReturns == lineFeeds) return {};
  return std::string("the file's lines end with a ") +
         (lineFeeds ? "line feed" : "carriage return") +
         " only; convert the file to line ends of carriage return and line feed, "
         "for example with " +
         (lineFeeds ? "unix2dos" : "mac2unix and then unix2dos");
}

/// The line end before `record` as a fault of its own; `record` when it is as it should be. A
/// record's line end is the two characters before the next record.
std::size_t BadLineEndBefore(std::string_view text, std::size_t record) {
  if (record < 2 || text.substr(record - 2, 2) == kLineBreaks) return record;
  return text[record - 2] == '\r' ? record - 1 : record - 2;
}

std::string Unexpected(std::string_view text, std::size_t at, const std::string& expected) {
  return Place(text, at) + "found " + Shown(text[at]) + ", expected " + expected;
}

/// A record that cannot be one because it does not begin as one.
std::string BadBeginning(std::string_view text, std::size_t record) {
  const std::size_t lineEnd = BadLineEndBefore(text, record);
  if (lineEnd != record) {
    return Unexpected(text, lineEnd,
                      "the line to end with a carriage return and a line feed right behind the "
                      "record's checksum");
  }
  if (record >= text.size() || text[record] == ':') return {};
  if (kLineBreaks.find(text[record]) != std::string_view::npos) {
    return Place(text, record) +
           "the line is empty; every line must hold a record that begins with \":\"";
  }
  const bool byteOrderMark = text.substr(record).starts_with("\xEF\xBB\xBF");
  return Place(text, record) + "found " +
         (byteOrderMark ? "a byte-order mark" : Shown(text[record])) +
         " at the beginning of a record; a record must begin with \":\"";
}

std::string OwnFault(const HexFault& fault, std::string_view text, std::int32_t lastCell) {
  switch (fault.kind) {
    case HexFault::Kind::Digit: {
      const bool lowerCase = text[fault.at] >= 'a' && text[fault.at] <= 'f';
      return Unexpected(text, fault.at,
                        std::string("a digit 0-9 or A-F") + (lowerCase ? " (upper case)" : ""));
    }
    case HexFault::Kind::Address:
      return Place(text, fault.at) + "the record reaches address 0x" +
             HexText(HexRecord(text, fault.record).Last()) + ", expected none above 0x" +
             HexText(lastCell);
    case HexFault::Kind::LineEnd:
      return Place(text, fault.at) + "the line ends with " + Shown(text[fault.at]) +
             " only, expected a carriage return and a line feed";
    default:
      return Place(text, fault.at) + "the file ends inside a record, expected the rest of " +
             Stump(text.substr(fault.record, fault.at - fault.record)) +
             ", or an end record in its place";
  }
}

}  // namespace

std::size_t LineNumber(std::string_view text, std::size_t at) { return PositionOf(text, at).line; }

std::string Explain(const HexFault& fault, std::string_view text, std::int32_t lastCell) {
  const std::string lineEnds = WrongLineEnds(text);
  // Line ends of one character are to blame for all that comes behind the first of them.
  const bool shifted = !lineEnds.empty() && text.find_first_of(kLineBreaks) < fault.at;
  if (shifted || (!lineEnds.empty() && fault.kind == HexFault::Kind::LineEnd)) {
    const std::size_t firstEnd = text.find_first_of(kLineBreaks);
    const bool lowerCase = text.find_first_of("abcdef") != std::string_view::npos;
    return Place(text, firstEnd) + lineEnds +
           (lowerCase ? "; and its digits a-f must be in upper case, A-F" : "");
  }
  std::string problem = BadBeginning(text, fault.record);
  if (problem.empty()) problem = OwnFault(fault, text, lastCell);
  return lineEnds.empty() ? problem : problem + "; and " + lineEnds;
}

}  // namespace loadfile
