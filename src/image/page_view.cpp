#include "image/page_view.h"

#include <string>

#include "image/hex_number.h"

namespace {

constexpr int kBytesPerPage = 256;
constexpr int kBytesPerLine = 16;

template <typename Cell>
std::string PageText(std::span<const Cell> bytes, int page, std::string_view titleSuffix) {
  std::string text = "this is " + HexText(page) + "  page" + std::string(titleSuffix) + "\r\n";
  for (int line = 0; line < kBytesPerPage; line += kBytesPerLine) {
    text += "000" + HexText(page * kBytesPerPage + line) + "    ";
    for (int i = line; i < line + kBytesPerLine; ++i) {
      text += fileop::HexByte(bytes[static_cast<std::size_t>(i)]) + " ";
    }
    text += "\r\n";
  }
  return text;
}

}  // namespace

void ShowLoadPage(const tongxun::CodeBuffers& buffers, int page, PageView& view) {
  const std::span<const std::uint8_t> cells = buffers.CodeBuffer;
  const auto first = static_cast<std::size_t>(page) * kBytesPerPage;
  view.ShowData(PageText(cells.subspan(first, kBytesPerPage), page, " (Load Hex File Code)"));
}

void ShowReadPage(std::span<const std::int32_t> received, int page, PageView& view) {
  view.ShowData(PageText(received, page, " (Read Page Code)"));
}
