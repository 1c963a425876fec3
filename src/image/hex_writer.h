// Writes memory as an Intel HEX text.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace loadfile {

/// Records of up to 16 bytes of type 00, none across a multiple of 16, and the end record; lines
/// end with CR LF. `cells` stand at `first` and behind it, within 0..0xFFFF.
std::string HexFileText(std::int32_t first, std::span<const std::uint8_t> cells);

}  // namespace loadfile
