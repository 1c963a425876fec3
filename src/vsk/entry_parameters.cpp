#include "vsk/entry_parameters.h"

#include <algorithm>
#include <system_error>
#include <vector>

#include "platform/files.h"
#include "text/hex_text.h"

using namespace tongxun;

namespace fileop {
namespace {

constexpr const char* kByteMessage = "please input two word HEX number:(00-FF)";
constexpr const char* kCountMessage = "please input two word HEX number:(01-04)";

using Bytes = std::vector<std::uint8_t>;

/// The value of one box. An empty one and a wrong digit are refused silently.
Result<int> ReadBox(const std::string& text, const char* lengthMessage) {
  const std::string_view trimmed = Trim(text);
  if (trimmed.empty()) return Status::Failed("");
  if (Length(trimmed) != 2) return Status::Failed(lengthMessage);
  const auto value = Module1::HexByteValue(trimmed);
  if (!value) return Status::Failed("");
  return *value;
}

/// The file's content.
Result<Bytes> ReadEntry(const SecurityEntry& entry) {
  const Result<int> address = ReadBox(entry.address, kByteMessage);
  if (!address.Ok()) return address;

  const Result<int> count = ReadBox(entry.count, kCountMessage);
  if (!count.Ok()) return count;
  const auto codes = static_cast<std::size_t>(*count);
  if (codes < 1 || codes > entry.codes.size()) return Status::Failed(kCountMessage);

  // The address goes out as a 32-bit and the count as a 16-bit little-endian number, each partly
  // overwritten by what follows; four bytes are therefore the least that a file holds.
  Bytes bytes(std::max<std::size_t>(4, kEntryFirstCode + codes));
  bytes[kEntryAddress] = static_cast<std::uint8_t>(*address);
  bytes[kEntryCodeCount] = static_cast<std::uint8_t>(*count);
  for (std::size_t i = 0; i < codes; ++i) {
    const Result<int> code = ReadBox(entry.codes[i], kByteMessage);
    if (!code.Ok()) return code;
    bytes[kEntryFirstCode + i] = static_cast<std::uint8_t>(*code);
  }
  return bytes;
}

}  // namespace

void ReadSecurityFile(const std::filesystem::path& path,
                      std::span<std::int16_t, kEntryCells> params) {
  EnsureFile(path);
  const Result<std::string> file = ReadFile(path, params.size());
  const std::size_t count = file->size();
  for (std::size_t i = 0; i < count; ++i) params[i] = static_cast<std::uint8_t>((*file)[i]);
  if (count < params.size()) params[count] = 0;
}

Status CheckSecurityEntry(const SecurityEntry& entry, const std::filesystem::path& path) {
  Result<Bytes> bytes = ReadEntry(entry);
  if (!bytes.Ok()) {
    std::error_code error;
    std::filesystem::remove(path, error);
    return bytes;
  }
  Status written = WriteAtStart(path, *bytes);
  if (written.Ok()) return written;
  return Status::Failed("the entry parameters could not be written to " + PathText(path),
                        written.Reason());
}

}  // namespace fileop
