#include "rtd2120/rtd_load.h"

#include <algorithm>

#include "text/hex_text.h"

namespace tongxun2120 {

void Load_RTD2120_NormalFile(const std::string& name, Bank bank, RtdImages& images, RtdView& view) {
  if (name.empty()) return;
  const loadfile::Format& format = loadfile::FormatOf(name, loadfile::kOneFileFormats);
  const loadfile::ReadTarget target{images.RtdLoadBuffer, images.RtdLoadMax};
  const auto file = loadfile::ReadImage(name, format, target, view);
  if (!file) return;

  auto& staged = images.RtdLoadBuffer;
  if (images.RtdLoadMax < 0xFFFF) {
    std::fill(staged.begin() + images.RtdLoadMax + 1, staged.begin() + 0x10000, std::uint8_t{0xFF});
  }
  const BankImage image = images.Of(bank);
  image.cells = staged;
  image.maximum = images.RtdLoadMax;
  image.loaded = true;
  image.file = *file;
  images.SumRtdBank(bank);
  view.ShowBankRow(bank, {.file = name,
                          .maximumAddress = std::to_string(image.maximum),
                          .checksum = HexText(images.RtdBankSum)});
}

}  // namespace tongxun2120
