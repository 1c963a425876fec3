// An image lies in an array of cells, one per byte address.
#pragma once

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <span>

namespace tongxun {

/// The cells 0..maximum; none for a negative maximum, which stands for an empty image.
inline std::span<const std::uint8_t> UsedCells(std::span<const std::uint8_t> cells,
                                               std::int32_t maximum) {
  const auto used = static_cast<std::size_t>(std::max(maximum + 1, 0));
  return cells.first(std::min(used, cells.size()));
}

/// Adds the bytes to a 16-bit additive checksum.
inline std::uint16_t SumBytes(std::uint16_t sum, std::span<const std::uint8_t> bytes) {
  return static_cast<std::uint16_t>(std::accumulate(bytes.begin(), bytes.end(), unsigned{sum}));
}

}  // namespace tongxun
