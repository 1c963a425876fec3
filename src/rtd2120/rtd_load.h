// The load command of the RTD2120 writer window.
#pragma once

#include <optional>
#include <string>

#include "image/readers.h"
#include "rtd2120/rtd_images.h"

namespace tongxun2120 {

/// The row of boxes that describes the image in one bank buffer.
struct RtdBankRow {
  std::string file;            // full file name
  std::string maximumAddress;  // decimal
  std::string checksum;        // hexadecimal
};

class RtdLoadView : public FileView {
 public:
  virtual void ShowBankRow(Bank bank, const RtdBankRow& row) = 0;
};

/// Asks for one file and loads it into the bank's buffer; cells above the image become 0xFF. A
/// refused file or a cancelled dialog changes nothing.
void Load_RTD2120_NormalFile(Bank bank, RtdImages& images, RtdLoadView& view);

}  // namespace tongxun2120

namespace loadfile {

/// Fill `RtdLoadBuffer` and `RtdLoadMax`. Nothing when the file was refused; nothing has changed
/// then.
std::optional<LoadedFile> ReadRtdHexFile(const std::string& name, tongxun2120::RtdImages& images,
                                         FileView& view);
std::optional<LoadedFile> ReadRtdBinFile(const std::string& name, tongxun2120::RtdImages& images,
                                         FileView& view);

}  // namespace loadfile
