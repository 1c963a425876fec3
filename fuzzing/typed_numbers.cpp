// What operators type: each line alone as a number of every kind, the lines in turn as answers to
// an input box, and the first six as the boxes of the Security Check window.
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "fuzz.h"
#include "simple_parsers.h"
#include "support/transcript.h"
#include "text/csv_fields.h"
#include "text/hex_text.h"
#include "vsk/entry_parameters.h"
#include "vsk/isp_view.h"

namespace {

using Lines = std::vector<std::string>;

Lines LinesOf(const std::string& text) {
  Lines lines(1);
  for (const char c : text) {
    if (c == '\n') {
      lines.emplace_back();
    } else {
      lines.back() += c;
    }
  }
  return lines;
}

/// The characters at `places` of the trimmed text, -1 standing for its last one; in either case.
std::optional<int> Picked(const std::string& text, const std::vector<int>& places) {
  const std::string trimmed = simple::Trim(text, " ");
  if (trimmed.size() < std::max<std::size_t>(places.size() - 1, 1)) return std::nullopt;
  int number = 0;
  for (const int place : places) {
    const char c = place < 0 ? trimmed.back() : trimmed[static_cast<std::size_t>(place)];
    if (simple::Digit(c, true) < 0) return std::nullopt;
    number = 16 * number + simple::Digit(c, true);
  }
  return number;
}

std::optional<int> Byte(const std::string& text) { return Picked(text, {0, -1}); }
std::optional<int> Word(const std::string& text) { return Picked(text, {0, 1, 2, -1}); }

/// Counts what does not continue a character of UTF-8.
long Characters(const std::string& text) {
  return std::count_if(text.begin(), text.end(), [](char c) {
    return static_cast<unsigned char>(c) < 0x80 || static_cast<unsigned char>(c) >= 0xC0;
  });
}

void CheckNumbers(const std::string& line) {
  const auto whole = WholeHex(line);
  Require(whole == simple::WholeHex(line), "a hexadecimal number");
  Require(Module1::HexByteValue(line) == Byte(line), "a byte");
  const bool upper = line == UpperCase(line);
  Require(Module1::HexWordValue(line) == (upper ? Word(line) : Module1::HexWordValue(line)),
          "an upper-case word");
  Require(Module1::HexWordValue(UpperCase(line)) == Word(line), "a word");
  Require(LeadingDecimal(line) == simple::Decimal(line), "a decimal number");
  Require(LeadingMask(line) == simple::Mask(line), "a mask");
}

/// The first answer that is a number, until an empty one cancels; counts the refused ones.
template <typename Read>
std::optional<int> FirstGood(const Lines& answers, long length, Read read, std::size_t& refused) {
  for (const std::string& answer : answers) {
    if (answer.empty()) return std::nullopt;
    const auto number = Characters(answer) == length ? read(answer) : std::nullopt;
    if (number) return number;
    ++refused;
  }
  return std::nullopt;
}

template <typename Ask, typename Read>
void CheckQuestion(const Lines& answers, long length, Ask ask, Read read) {
  Transcript view;
  view.answers.assign(answers.begin(), answers.end());
  std::size_t refused = 0;
  const auto expected = FirstGood(answers, length, read, refused);
  Require(ask(view) == expected, "the first good answer");
  const auto said = view.Take();
  const auto complaints = std::count_if(said.begin(), said.end(), [](const std::string& line) {
    return line.starts_with("message please input ");
  });
  Require(complaints == static_cast<long>(refused), "one complaint for each refused answer");
}

/// The bytes of the parameter file; nothing when a box is wrong.
std::optional<std::string> EntryBytes(const Lines& boxes) {
  const auto byteIn = [&](std::size_t box) {
    return Characters(simple::Trim(boxes[box], " ")) == 2 ? Byte(boxes[box]) : std::nullopt;
  };
  const auto address = byteIn(0);
  const auto count = byteIn(1);
  if (!address || !count || *count < 1 || *count > 4) return std::nullopt;
  std::string bytes{static_cast<char>(*address), static_cast<char>(*count)};
  for (std::size_t i = 0; i < static_cast<std::size_t>(*count); ++i) {
    const auto code = byteIn(2 + i);
    if (!code) return std::nullopt;
    bytes += static_cast<char>(*code);
  }
  if (bytes.size() < 4) bytes += '\0';
  return bytes;
}

void CheckSecurityBoxes(Lines boxes) {
  static const InputFile file("security.cod");
  file.Write("");
  boxes.resize(6);
  const fileop::SecurityEntry entry{boxes[0], boxes[1], {boxes[2], boxes[3], boxes[4], boxes[5]}};
  const Status check = fileop::CheckSecurityEntry(entry, file.Path());
  const auto bytes = EntryBytes(boxes);
  Require(check.Ok() == bytes.has_value(), "the boxes that the plain reading takes");
  if (bytes) Require(file.Read() == *bytes, "the file holds what was typed");
  if (!bytes) Require(!std::filesystem::exists(file.Path()), "a refused entry leaves no file");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Lines lines = LinesOf(TextOf(data, size));
  for (const std::string& line : lines) CheckNumbers(line);
  CheckQuestion(
      lines, 2, [](IspView& view) { return AskPageNumber(view); }, Byte);
  CheckQuestion(
      lines, 4, [](IspView& view) { return AskAddress(view, "prompt", "0000"); }, Word);
  CheckSecurityBoxes(lines);
  return 0;
}
