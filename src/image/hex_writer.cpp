#include "image/hex_writer.h"

#include <algorithm>
#include <vector>

#include "text/hex_text.h"

namespace loadfile {
namespace {

constexpr std::size_t kRecordBytes = 16;

/// `:` count address type data.. checksum
std::string Record(std::size_t address, int type, std::span<const std::uint8_t> data) {
  std::vector<std::size_t> bytes{data.size(), address / 256, address % 256,
                                 static_cast<std::size_t>(type)};
  bytes.insert(bytes.end(), data.begin(), data.end());
  std::size_t sum = 0;
  std::string text = ":";
  for (const std::size_t byte : bytes) {
    sum += byte;
    text += fileop::HexByte(static_cast<int>(byte));
  }
  return text + fileop::HexByte(static_cast<int>((256 - sum % 256) % 256)) + "\r\n";
}

}  // namespace

std::string HexFileText(std::int32_t first, std::span<const std::uint8_t> cells) {
  std::string text;
  for (auto address = static_cast<std::size_t>(first); !cells.empty();) {
    const std::size_t count = std::min(kRecordBytes - address % kRecordBytes, cells.size());
    text += Record(address, 0, cells.first(count));
    cells = cells.subspan(count);
    address += count;
  }
  return text + ":00000001FF\r\n";
}

}  // namespace loadfile
