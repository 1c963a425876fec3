// Raw binary files, into a code buffer of full size and into one so small that files outgrow it.
#include <algorithm>
#include <string>
#include <vector>

#include "fuzz.h"
#include "image/readers.h"
#include "support/file_answers.h"

namespace {

void Check(const std::string& name, const std::string& bytes, std::size_t cellCount) {
  std::vector<std::uint8_t> cells(cellCount, 0xA5);
  std::vector<std::uint8_t> expected = cells;
  std::int32_t maximum = 4711;
  FileAnswers<> view;
  Require(loadfile::ReadImage(name, loadfile::kBinary, {cells, maximum}, view).Ok(),
          "every file is taken");

  const std::size_t most = std::min<std::size_t>(65536, cellCount);
  std::size_t stored = 0;
  for (; stored < bytes.size() && stored < most; ++stored) {
    expected[stored] = static_cast<std::uint8_t>(bytes[stored]);
  }
  if (stored < most) expected[stored] = 0xFF;
  Require(cells == expected, "the file's bytes, then one FF, then what stood there");
  Require(maximum == static_cast<std::int32_t>(stored) - 1, "the address of the last byte");
  Require(view.Take() == std::vector<std::string>{"clear"}, "nothing is said");
  Require(view.notes.empty() == (stored == bytes.size()), "a file that is longer is told");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile file("image.bin");
  const std::string bytes = TextOf(data, size);
  file.Write(bytes);
  for (const std::size_t cells : {65537U, 16U}) Check(file.Path().string(), bytes, cells);
  return 0;
}
