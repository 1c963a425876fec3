// The load command of the RTD2120 writer window.
#pragma once

#include <string>

#include "image/readers.h"
#include "rtd2120/rtd_images.h"
#include "rtd2120/rtd_view.h"

namespace tongxun2120 {

/// Of its firmware files.
inline constexpr loadfile::Formats kRtdFormats = loadfile::kOneFileFormats;

/// Loads the file, a UTF-8 name, into the bank's buffer; cells above the image become 0xFF. Fails
/// when the file was refused: nothing has changed then, nor has for an empty name: the operator
/// chose none.
Result<loadfile::ImageFacts> Load_RTD2120_NormalFile(const std::string& name, Bank bank,
                                                     RtdImages& images, RtdView& view);

}  // namespace tongxun2120

namespace loadfile {

// Fill `RtdLoadBuffer` and `RtdLoadMax`.
inline auto ReadRtdHexFile(const std::string& name, tongxun2120::RtdImages& images,
                           WriterView& view) {
  return ReadImage(name, kHex, {images.RtdLoadBuffer, images.RtdLoadMax}, view);
}
inline auto ReadRtdBinFile(const std::string& name, tongxun2120::RtdImages& images,
                           WriterView& view) {
  return ReadImage(name, kBinary, {images.RtdLoadBuffer, images.RtdLoadMax}, view);
}

}  // namespace loadfile
