// One page of an image as a hex dump.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "text/hex_text.h"

/// A title line and one line for each 16 of the page's bytes, ended by CR LF. The bytes' count is
/// the page size; `titleSuffix` says where they come from. An address is "000" and the digits that
/// it has: the first line of page 0 is meant to be a character shorter.
template <typename Cell>
std::string PageText(std::span<const Cell> bytes, int page, std::string_view titleSuffix) {
  constexpr std::size_t kBytesPerLine = 16;
  const int pageStart = page * static_cast<int>(bytes.size());
  std::string text = "this is " + HexText(page) + "  page" + std::string(titleSuffix) + "\r\n";
  for (std::size_t line = 0; line < bytes.size(); line += kBytesPerLine) {
    text += "000" + HexText(pageStart + static_cast<int>(line)) + "    ";
    for (const Cell byte : bytes.subspan(line, kBytesPerLine)) text += fileop::HexByte(byte) + " ";
    text += "\r\n";
  }
  return text;
}
