#include "vsk/vsk_load.h"

#include <algorithm>

#include "text/hex_text.h"

namespace {

using loadfile::FileKind;

loadfile::ReadTarget Staging(tongxun::VskImages& images, std::int32_t lastCell) {
  const auto cells = static_cast<std::size_t>(lastCell) + 1;
  return {std::span(images.CodeBuffer).first(cells), images.CodeMax};
}

/// Reads a checked file into `CodeBuffer` and moves the image into `bank`, leaving 0xFF behind.
void LoadBank(const loadfile::ImageFile& file, std::int32_t lastCell, tongxun::VskImages& images,
              tongxun::VskCells& bank, std::int32_t& bankMaximum, FileView& view) {
  file.StoreInto(Staging(images, lastCell), view);
  bankMaximum = images.CodeMax;
  const auto image = images.CodeBuffer.begin();
  std::copy_n(image, bankMaximum + 1, bank.begin());
  std::fill_n(image, bankMaximum + 1, std::uint8_t{0xFF});
}

}  // namespace

namespace loadfile {

bool ReadHexFile(const std::string& name, std::int32_t lastCell, tongxun::VskImages& images,
                 FileView& view) {
  return ReadImage(name, FileKind::Hex, Staging(images, lastCell), view);
}

bool ReadBinFile(const std::string& name, std::int32_t lastCell, tongxun::VskImages& images,
                 FileView& view) {
  return ReadImage(name, FileKind::Binary, Staging(images, lastCell), view);
}

}  // namespace loadfile

void Load_Vsk830_NormalFile(std::int32_t lastCell, tongxun::VskImages& images, VskLoadView& view) {
  const std::string name = view.ChooseFile(loadfile::kOneFileFilters);
  if (!name.empty()) {
    const bool isHex = loadfile::KindOf(name, "HEX") == FileKind::Hex;
    const auto read = isHex ? loadfile::ReadHexFile : loadfile::ReadBinFile;
    if (!read(name, lastCell, images, view)) return;
    images.CheckCode();
    view.ShowMaximumAddress(HexText(images.CodeMax));
    view.ShowSoftwareCrc(HexText(images.CodeCrc));
    view.ShowChecksum(HexText(images.CodeSum));
    view.ShowHardwareCrc("");
    images.CodeLoaded = true;
    images.File = name;
  }
  view.ShowFileName(name);
}

void Load_Vsk630_NormalFile(std::int32_t lastCell, tongxun::VskImages& images, VskLoadView& view) {
  const std::string name = view.ChooseFile(loadfile::kPairFilters);
  if (!name.empty()) {
    const FileKind kind = loadfile::KindOf(name, "H00");
    const auto last = static_cast<std::size_t>(lastCell);
    const loadfile::ImageFile file0(name, kind, last);
    const loadfile::ImageFile file1(name.substr(0, name.size() - 1) + "1", kind, last,
                                    loadfile::Missing::Empty);
    if (file0.Refused()) return file0.Refuse(view);
    if (file1.Refused()) return file1.Refuse(view);

    view.ClearPrintedLines();
    LoadBank(file0, lastCell, images, images.CodeBank0, images.CodeBank0Max, view);
    LoadBank(file1, lastCell, images, images.CodeBank1, images.CodeBank1Max, view);
    images.SumBanks();
    images.CrcBanks();
    images.CodeLoaded = true;
    images.File = name;
    view.ShowMaximumAddress(HexText(images.CodeBank0Max) + "  " + HexText(images.CodeBank1Max));
    view.ShowChecksum(HexText(images.CodeSum));
    view.ShowSoftwareCrc(HexText(images.CodeCrc));
    view.ShowHardwareCrc("");
  }
  view.ShowFileName(name);
}
