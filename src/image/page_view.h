// Renders one 256-byte page as the hex dump of the data display.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "image/code_buffers.h"

class PageView {
 public:
  virtual ~PageView() = default;
  /// Replaces the whole text of the data display (`Text1`). Lines end with CR LF.
  virtual void ShowData(std::string_view text) = 0;
};

/// Shows page 0..255 of the loaded image.
void ShowLoadPage(const tongxun::CodeBuffers& buffers, int page, PageView& view);

/// Shows `received`[0..255], read from the chip, labelled as page 0..255.
void ShowReadPage(std::span<const std::int32_t> received, int page, PageView& view);
