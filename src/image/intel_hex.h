// Intel HEX text as fixed fields of characters. Pure: no files, no windows.
//
//   : nn aaaa tt dd..dd cc CR LF    start code, byte count, address, type, data, checksum, line end
//
// Every record is stored as a data record, whatever its type and checksum. A record that begins
// within the last 13 characters is never read, which leaves the end-of-file record out.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "image/load_notes.h"
#include "platform/status.h"

namespace loadfile {

/// Checks the whole text without storing anything. Digits are 0-9 and A-F only; a record must be
/// complete, its line end two characters, its bytes within 0..`lastCell`. What is left behind the
/// last record that is read must be blank or Ctrl-Z, or an end-of-file record, which may be cut
/// off. `text` is not empty. A failure's reason says what is wrong, and where.
Result<LoadNotes> CheckHex(std::string_view text, std::int32_t lastCell);

/// Stores the bytes of a text that `CheckHex` found good for `cells`; cells that no record names
/// keep their contents. Returns the address of the last byte; 0 for a text without data.
std::int32_t StoreHex(std::string_view text, std::span<std::uint8_t> cells);

}  // namespace loadfile
