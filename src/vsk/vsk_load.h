// The load commands of the VSK writer window.
#pragma once

#include <cstdint>
#include <string>

#include "image/readers.h"
#include "vsk/isp_view.h"
#include "vsk/vsk_images.h"

struct VskModel;

/// A load command. `name`: the file, UTF-8; empty when the operator chose none, which empties the
/// file-name box. `model`: the chip that the image is for. Fails when the file was refused.
using VskLoader = Result<loadfile::ImageFacts> (*)(const std::string& name, const VskModel& model,
                                                   tongxun::VskImages& images, IspView& view);

/// Loads one file into `CodeBuffer` and shows its checks. A refused file changes nothing.
Result<loadfile::ImageFacts> Load_Vsk830_NormalFile(const std::string& name, const VskModel& model,
                                                    tongxun::VskImages& images, IspView& view);

/// Loads the bank-0 file of a pair, and the bank-1 file of the same name ending in "1", through
/// `CodeBuffer` into `CodeBank0` and `CodeBank1`. Both are checked before either is stored: a
/// refused one refuses the pair. A missing binary bank-1 file reads as empty.
Result<loadfile::ImageFacts> Load_Vsk630_NormalFile(const std::string& name, const VskModel& model,
                                                    tongxun::VskImages& images, IspView& view);

namespace loadfile {

/// `CodeBuffer`[0..lastCell] and `CodeMax`, which the readers below fill.
inline ReadTarget CodeTarget(tongxun::VskImages& images, std::int32_t lastCell) {
  const auto cells = static_cast<std::size_t>(lastCell) + 1;
  return {std::span(images.CodeBuffer).first(cells), images.CodeMax};
}
inline auto ReadHexFile(const std::string& name, std::int32_t lastCell, tongxun::VskImages& images,
                        WriterView& view) {
  return ReadImage(name, kHex, CodeTarget(images, lastCell), view);
}
inline auto ReadBinFile(const std::string& name, std::int32_t lastCell, tongxun::VskImages& images,
                        WriterView& view) {
  return ReadImage(name, kBinary, CodeTarget(images, lastCell), view);
}

}  // namespace loadfile
