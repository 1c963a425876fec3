// Intel HEX files, into a code buffer of each size.
#include <algorithm>
#include <string>
#include <vector>

#include "fuzz.h"
#include "image/readers.h"
#include "simple_parsers.h"
#include "support/file_answers.h"

namespace {

using Cells = std::vector<std::uint8_t>;

struct Image {
  Cells cells;
  std::int32_t maximum;
  std::size_t wrongStartCodes = 0;
};

/// Stores the records one after another; false at the first that cannot be read.
bool Parse(const std::string& text, Image& image) {
  const auto isBreak = [&](std::size_t at) { return text[at] == '\r' || text[at] == '\n'; };
  std::size_t read = 0;
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
    if (text[read] != ':') ++image.wrongStartCodes;
    image.maximum = std::max(image.maximum, address + count - 1);
    read = end;
  } while (read + 14 <= text.size());
  return true;
}

std::vector<std::string> Refusal() {
  return {"beep", "beep", "message path or file name error!!!"};
}

void Check(const std::string& name, const std::string& text, std::size_t cellCount) {
  const Image before{Cells(cellCount, 0xA5), 4711};
  Image loaded = before;
  FileAnswers<FileView> view;
  const bool accepted =
      loadfile::ReadImage(name, loadfile::FileKind::Hex, {loaded.cells, loaded.maximum}, view);

  Image expected = before;
  const bool good = !text.empty() && Parse(text, expected);
  Require(accepted == (good || text.empty()), "taken exactly when the plain reading takes it");
  if (!good) {
    Require(loaded.cells == before.cells, "a refused file changes no cell");
    Require(loaded.maximum == before.maximum, "a refused file leaves the maximum address");
  }
  if (!accepted) {
    Require(view.Take() == Refusal(), "a refusal is two beeps and one message");
    Require(view.lastDetail.starts_with(name + "\nline "), "the message names file and line");
  }
  if (!good) return;
  Require(loaded.cells == expected.cells, "every cell as the plain reading has it");
  Require(loaded.maximum == expected.maximum, "the maximum address as the plain reading has it");
  std::vector<std::string> said(1 + expected.wrongStartCodes, "print error!!!");
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
