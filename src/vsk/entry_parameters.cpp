#include "vsk/entry_parameters.h"

#include <algorithm>
#include <optional>
#include <system_error>
#include <vector>

#include "platform/files.h"
#include "text/hex_text.h"

namespace fileop {
namespace {

constexpr const char* kByteMessage = "please input two word HEX number:(00-FF)";
constexpr const char* kCountMessage = "please input two word HEX number:(01-04)";

/// One box: its value, or why it is refused. An empty box and a wrong digit are refused silently.
struct BoxValue {
  std::optional<int> value;
  std::string message;
};

BoxValue ReadBox(const std::string& text, const char* lengthMessage) {
  const std::string_view trimmed = Trim(text);
  if (trimmed.empty()) return {};
  if (Length(trimmed) != 2) return {.value = {}, .message = lengthMessage};
  return {.value = Module1::HexByteValue(trimmed), .message = {}};
}

SecurityCheck Refused(const std::string& message = {}) {
  return {.accepted = false, .message = message};
}

/// Fills `bytes` with the file's content.
SecurityCheck ReadEntry(const SecurityEntry& entry, std::vector<std::uint8_t>& bytes) {
  const BoxValue address = ReadBox(entry.address, kByteMessage);
  if (!address.value) return Refused(address.message);

  const BoxValue count = ReadBox(entry.count, kCountMessage);
  if (!count.value) return Refused(count.message);
  if (*count.value < 1 || *count.value > 4) return Refused(kCountMessage);

  // The address goes out as a 32-bit and the count as a 16-bit little-endian number, each partly
  // overwritten by what follows; four bytes are therefore the least that a file holds.
  bytes = {static_cast<std::uint8_t>(*address.value), static_cast<std::uint8_t>(*count.value), 0,
           0};
  bytes.resize(std::max<std::size_t>(4, 2 + static_cast<std::size_t>(*count.value)));
  for (std::size_t i = 0; i < static_cast<std::size_t>(*count.value); ++i) {
    const BoxValue code = ReadBox(entry.codes[i], kByteMessage);
    if (!code.value) return Refused(code.message);
    bytes[2 + i] = static_cast<std::uint8_t>(*code.value);
  }
  return {.accepted = true};
}

}  // namespace

void ReadSecurityFile(const std::filesystem::path& path, std::span<std::int16_t, 11> params) {
  EnsureFile(path);
  const FileContent file = ReadFile(path, params.size());
  const std::size_t count = file.bytes.size();
  for (std::size_t i = 0; i < count; ++i) params[i] = static_cast<std::uint8_t>(file.bytes[i]);
  if (count < params.size()) params[count] = 0;
}

SecurityCheck CheckSecurityEntry(const SecurityEntry& entry, const std::filesystem::path& path) {
  std::vector<std::uint8_t> bytes;
  SecurityCheck check = ReadEntry(entry, bytes);
  if (!check.accepted) {
    std::error_code error;
    std::filesystem::remove(path, error);
    return check;
  }
  const std::string problem = WriteAtStart(path, bytes);
  if (problem.empty()) return check;
  return {.message = "the entry parameters could not be written to " + PathText(path),
          .reason = problem};
}

}  // namespace fileop
