#include "rtd2120/rtd_load.h"

#include <algorithm>

#include "text/hex_text.h"

namespace tongxun2120 {

Result<loadfile::ImageFacts> Load_RTD2120_NormalFile(const std::string& name, Bank bank,
                                                     RtdImages& images, RtdView& view) {
  if (name.empty()) return loadfile::ImageFacts{};
  const loadfile::Format& format = loadfile::FormatOf(name, kRtdFormats);
  const loadfile::ReadTarget target{images.RtdLoadBuffer, images.RtdLoadMax};
  const auto taken = loadfile::ReadImage(name, format, target, view);
  if (!taken.Ok()) return taken;

  auto& staged = images.RtdLoadBuffer;
  if (images.RtdLoadMax < 0xFFFF) {
    std::fill(staged.begin() + images.RtdLoadMax + 1, staged.begin() + 0x10000, std::uint8_t{0xFF});
  }
  const BankImage image = images.Of(bank);
  image.cells = staged;
  image.maximum = images.RtdLoadMax;
  image.loaded = true;
  image.file = taken->file;
  images.SumRtdBank(bank);
  const loadfile::ImageFacts facts{.maximumAddress = std::to_string(image.maximum),
                                   .checksum = HexText(images.RtdBankSum),
                                   .dataBytes = taken->dataBytes,
                                   .wrongStartCodes = taken->wrongStartCodes,
                                   .emptyTexts = taken->emptyTexts,
                                   .notes = taken->notes};
  view.ShowBankRow(bank, name, facts);
  return facts;
}

}  // namespace tongxun2120
