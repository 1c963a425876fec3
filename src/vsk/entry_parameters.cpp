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
Result<std::string> ReadEntry(const SecurityEntry& entry) {
  const Result<int> address = ReadBox(entry.address, kByteMessage);
  if (!address.Ok()) return address;

  const Result<int> count = ReadBox(entry.count, kCountMessage);
  if (!count.Ok()) return count;
  if (*count < 1 || *count > std::ssize(entry.codes)) return Status::Failed(kCountMessage);

  std::vector<std::uint8_t> codes;
  for (int i = 0; i < *count; ++i) {
    const Result<int> code = ReadBox(entry.codes[static_cast<std::size_t>(i)], kByteMessage);
    if (!code.Ok()) return code;
    codes.push_back(static_cast<std::uint8_t>(*code));
  }
  return EntryContent(static_cast<std::uint8_t>(*address), codes);
}

}  // namespace

std::string EntryContent(std::uint8_t address, std::span<const std::uint8_t> codes) {
  // The address goes out as a 32-bit and the count as a 16-bit little-endian number, each partly
  // overwritten by what follows; four bytes are therefore the least that a file holds.
  std::string bytes(std::max<std::size_t>(4, kEntryFirstCode + codes.size()), '\0');
  bytes[kEntryAddress] = static_cast<char>(address);
  bytes[kEntryCodeCount] = static_cast<char>(codes.size());
  std::copy(codes.begin(), codes.end(), bytes.begin() + kEntryFirstCode);
  return bytes;
}

bool TakeEntry(std::string_view content, EntryParameters params) {
  const std::size_t taken = std::min(content.size(), params.size());
  for (std::size_t i = 0; i < taken; ++i) params[i] = static_cast<std::uint8_t>(content[i]);
  if (taken < params.size()) params[taken] = 0;
  const auto codes = static_cast<std::size_t>(params[kEntryCodeCount]);
  return taken > kEntryCodeCount && codes >= 1 && codes <= kMostCodes &&
         taken >= kEntryFirstCode + codes;
}

void ReadSecurityFile(const std::filesystem::path& path, EntryParameters params) {
  EnsureFile(path);
  TakeEntry(*ReadFile(path, params.size()), params);
}

Status CheckSecurityEntry(const SecurityEntry& entry, const std::filesystem::path& path) {
  Result<std::string> bytes = ReadEntry(entry);
  if (!bytes.Ok()) {
    std::error_code error;
    std::filesystem::remove(path, error);
    return bytes;
  }
  Status written = WriteAtStart(path, std::vector<std::uint8_t>(bytes->begin(), bytes->end()));
  if (written.Ok()) return written;
  return Status::Failed("the entry parameters could not be written to " + PathText(path),
                        written.Reason());
}

}  // namespace fileop
