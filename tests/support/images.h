// Test images, and how they look on the wire and in a chip.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/flash.h"
#include "text/hex_text.h"

inline std::vector<std::uint8_t> Image(std::size_t size, unsigned seed = 1) {
  std::vector<std::uint8_t> image(size);
  for (std::uint8_t& byte : image) {
    seed = seed * 1103515245 + 12345;
    byte = static_cast<std::uint8_t>(seed >> 16);
  }
  return image;
}

/// The page-data frame of page `page`, as the wire decoder sees it.
inline std::string DataFrame(const std::vector<std::uint8_t>& image, std::size_t page) {
  constexpr std::size_t kPageBytes = 256;
  std::string frame = "S 94 00";
  const std::size_t end = std::min(image.size(), kPageBytes * (page + 1));
  for (std::size_t i = kPageBytes * page; i < end; ++i) frame += " " + fileop::HexByte(image[i]);
  return frame + " P";
}

inline bool FlashEquals(const simulator::Flash& flash, const std::vector<std::uint8_t>& image) {
  return std::equal(image.begin(), image.end(), flash.Cells().begin());
}
