// The load commands of the VSK writer window.
#pragma once

#include <string_view>

#include "image/code_buffers.h"
#include "image/readers.h"

/// The boxes that describe the loaded VSK image.
class VskLoadView : public FileView {
 public:
  virtual void ShowFileName(std::string_view text) = 0;        // Text2, "MCU File"
  virtual void ShowMaximumAddress(std::string_view text) = 0;  // Text4, "MaxAddress"
  virtual void ShowChecksum(std::string_view text) = 0;        // Text3, "CheckSum"
  virtual void ShowSoftwareCrc(std::string_view text) = 0;     // Text5, "S/W CRC"
  virtual void ShowHardwareCrc(std::string_view text) = 0;     // Text6, "H/W CRC"
};

/// Asks for one file, loads it into `CodeBuffer` and shows its checks. A refused file changes
/// nothing; a cancelled dialog empties the file-name box.
void Load_Vsk830_NormalFile(tongxun::CodeBuffers& buffers, VskLoadView& view);
