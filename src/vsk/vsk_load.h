// The load commands of the VSK writer window.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "image/readers.h"
#include "vsk/vsk_images.h"

/// The boxes that describe the loaded VSK image.
class VskLoadView : public FileView {
 public:
  virtual void ShowFileName(std::string_view text) = 0;        // Text2, "MCU File"
  virtual void ShowMaximumAddress(std::string_view text) = 0;  // Text4, "MaxAddress"
  virtual void ShowChecksum(std::string_view text) = 0;        // Text3, "CheckSum"
  virtual void ShowSoftwareCrc(std::string_view text) = 0;     // Text5, "S/W CRC"
  virtual void ShowHardwareCrc(std::string_view text) = 0;     // Text6, "H/W CRC"
};

/// A load command. `filters`: of the names that are offered. `lastCell`: the highest address that
/// the chip's image may reach.
using VskLoader = void (*)(std::string_view filters, std::int32_t lastCell,
                           tongxun::VskImages& images, VskLoadView& view);

/// Asks for one file, loads it into `CodeBuffer` and shows its checks. A refused file changes
/// nothing; a cancelled dialog empties the file-name box.
void Load_Vsk830_NormalFile(std::string_view filters, std::int32_t lastCell,
                            tongxun::VskImages& images, VskLoadView& view);

/// Asks for the bank-0 file of a pair, takes the bank-1 file of the same name ending in "1", and
/// loads both through `CodeBuffer` into `CodeBank0` and `CodeBank1`. Both are checked before either
/// is stored: a refused one refuses the pair. A missing binary bank-1 file reads as empty.
void Load_Vsk630_NormalFile(std::string_view filters, std::int32_t lastCell,
                            tongxun::VskImages& images, VskLoadView& view);

namespace loadfile {

/// Fill `CodeBuffer`[0..lastCell] and `CodeMax`. Nothing when the file was refused; nothing has
/// changed then.
std::optional<LoadedFile> ReadHexFile(const std::string& name, std::int32_t lastCell,
                                      tongxun::VskImages& images, FileView& view);
std::optional<LoadedFile> ReadBinFile(const std::string& name, std::int32_t lastCell,
                                      tongxun::VskImages& images, FileView& view);

}  // namespace loadfile
