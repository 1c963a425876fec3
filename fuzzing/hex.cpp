// Intel HEX files, into a code buffer of each size.
#include <algorithm>
#include <string>
#include <vector>

#include "fuzz.h"
#include "image/intel_hex.h"
#include "image/readers.h"
#include "simple_parsers.h"
#include "support/file_answers.h"

namespace {

using Cells = std::vector<std::uint8_t>;

struct Image {
  Cells cells;
  std::int32_t maximum;
  loadfile::LoadNotes notes = {};
};

/// What may stand behind the last record that is read: no record of data, not even its beginning.
bool IsRest(std::string text) {
  text = simple::Trim(text, " \t\r\n\x1A");
  const std::string pattern = ":00####01##";
  if (text.size() > pattern.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (pattern[i] == '#' ? simple::Digit(text[i], true) < 0 : text[i] != pattern[i]) return false;
  }
  return text.empty() || text.size() > 2;
}

std::size_t LineOf(const std::string& text, std::size_t at) {
  std::size_t line = 1;
  for (std::size_t i = 0; i < at; ++i) {
    const std::string two = text.substr(i, 2);
    const std::string three = text.substr(i, 3);
    if (text[i] == '\n' || (text[i] == '\r' && two != "\r\n" && three != "\r\r\n")) ++line;
  }
  return line;
}

/// Looks at a record that could be read; `filled` counts the data bytes for each cell.
void TakeNotes(const std::string& text, std::size_t record, int address, int count,
               std::vector<int>& filled, loadfile::LoadNotes& notes) {
  const auto note = [&](loadfile::NotedLines& lines) {
    if (++lines.count == 1) lines = {1, LineOf(text, record), address};
  };
  const auto digits = [](std::string two) {
    for (char& c : two) c = c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c;
    return simple::Hex(two, 0, 2);
  };
  int sum = 0;
  bool readable = true;
  for (int i = 0; i < count + 5; ++i) {
    const int byte = digits(text.substr(record + 1 + 2 * static_cast<std::size_t>(i), 2));
    readable = readable && byte >= 0;
    sum += byte;
  }
  if (!readable || sum % 256 != 0) note(notes.wrongChecksums);
  const int type = digits(text.substr(record + 7, 2));
  if (count == 0) return;
  if (type == 2 || type == 4) return note(notes.addressRecords);
  if (type != 0) return note(notes.otherRecords);
  const auto begin = filled.begin() + address;
  if (std::any_of(begin, begin + count, [](int times) { return times > 0; })) {
    note(notes.overwrites);
  }
  for (int i = 0; i < count; ++i) ++begin[i];
}

/// Stores the records one after another; false at the first that cannot be read.
bool Parse(const std::string& text, Image& image) {
  const auto isBreak = [&](std::size_t at) { return text[at] == '\r' || text[at] == '\n'; };
  std::size_t read = 0;
  std::vector<int> filled(image.cells.size());
  image.maximum = 0;
  do {
    if (text.size() < read + 9) return false;
    const int count = simple::Hex(text, read + 1, 2);
    const int address = simple::Hex(text, read + 3, 4);
    if (count < 0 || address < 0) return false;
    const std::size_t end = read + 13 + 2 * static_cast<std::size_t>(count);
    if (text.size() < end) return false;
    for (int i = 0; i < count; ++i) {
      const auto cell = static_cast<std::size_t>(address + i);
      const int byte = simple::Hex(text, read + 9 + 2 * static_cast<std::size_t>(i), 2);
      if (byte < 0 || cell >= image.cells.size()) return false;
      image.cells[cell] = static_cast<std::uint8_t>(byte);
    }
    if (isBreak(end - 2) && !isBreak(end - 1)) return false;
    TakeNotes(text, read, address, count, filled, image.notes);
    if (text[read] != ':') ++image.notes.wrongStartCodes;
    image.notes.dataBytes += static_cast<std::size_t>(count);
    image.maximum = std::max(image.maximum, address + count - 1);
    read = end;
  } while (read + 14 <= text.size());
  return IsRest(text.substr(read));
}

std::vector<std::string> Refusal() {
  return {"beep", "beep", "message path or file name error!!!"};
}

void Check(const std::string& name, const std::string& text, std::size_t cellCount) {
  const Image before{Cells(cellCount, 0xA5), 4711};
  Image loaded = before;
  FileAnswers<> view;
  const bool accepted =
      loadfile::ReadImage(name, loadfile::kHex, {loaded.cells, loaded.maximum}, view).Ok();

  Image expected = before;
  const bool good = !text.empty() && Parse(text, expected);
  Require(accepted == (good || text.empty()), "taken exactly when the plain reading takes it");
  if (!good) {
    Require(loaded.cells == before.cells, "a refused file changes no cell");
    Require(view.notes.empty(), "nothing is told of a file that was not taken");
    Require(loaded.maximum == before.maximum, "a refused file leaves the maximum address");
  }
  if (!accepted) {
    Require(view.Take() == Refusal(), "a refusal is two beeps and one message");
    Require(view.lastDetail.starts_with(name + "\nline "), "the message names file and line");
  }
  if (!good) return;
  Require(loaded.cells == expected.cells, "every cell as the plain reading has it");
  Require(loaded.maximum == expected.maximum, "the maximum address as the plain reading has it");
  const auto check = loadfile::CheckHex(text, static_cast<std::int32_t>(cellCount) - 1);
  Require(*check == expected.notes, "the notes as the plain reading has them");
  std::vector<std::string> said(1 + expected.notes.wrongStartCodes, "print error!!!");
  expected.notes.wrongStartCodes = expected.notes.dataBytes = 0;  // are not explained
  Require(view.notes.empty() == (expected.notes == loadfile::LoadNotes{}), "notes are told");
  said[0] = "clear";
  Require(view.Take() == said, "a line for each wrong start code");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile file("image.hex");
  const std::string text = TextOf(data, size);
  file.Write(text);
  for (const std::size_t cells : {65537U, 65541U}) Check(file.Path().string(), text, cells);
  return 0;
}
