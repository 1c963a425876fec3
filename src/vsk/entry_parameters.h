// The ISP entry parameters in "Initial/security.cod": the slave address and the security codes that
// open ISP mode, laid out as `vsk_protocol.h` tells.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "platform/status.h"
#include "vsk/vsk_protocol.h"

namespace fileop {

using EntryParameters = std::span<std::int16_t, tongxun::kEntryCells>;

/// The file's content.
std::string EntryContent(std::uint8_t address, std::span<const std::uint8_t> codes);
/// Takes at most `kEntryCells` bytes of a file's content into `params` and sets the entry behind
/// the last one to 0; entries behind that keep their values. False for a content that holds not as
/// many security codes as it says, or none.
bool TakeEntry(std::string_view content, EntryParameters params);

/// Takes the file's content. A missing file is created empty.
void ReadSecurityFile(const std::filesystem::path& path, EntryParameters params);

/// What the operator typed into the Security Check window.
struct SecurityEntry {
  std::string address;
  std::string count;
  std::array<std::string, 4> codes;
};

/// Writes a complete and valid entry to the file; deletes the file when the entry is refused, for a
/// reason that is empty when the refusal is silent. A file that cannot be written keeps what it
/// holds.
Status CheckSecurityEntry(const SecurityEntry& entry, const std::filesystem::path& path);

}  // namespace fileop
