// The load command of the RTD2120 writer window.
#pragma once

#include <string>

#include "image/readers.h"
#include "rtd2120/rtd_images.h"
#include "rtd2120/rtd_view.h"

namespace tongxun2120 {

/// Loads the file, a UTF-8 name, into the bank's buffer; cells above the image become 0xFF. A
/// refused file changes nothing, nor does an empty name: the operator chose none.
void Load_RTD2120_NormalFile(const std::string& name, Bank bank, RtdImages& images, RtdView& view);

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
