#include "vsk/vsk_load.h"

#include <algorithm>

#include "text/hex_text.h"

namespace {

/// Reads a checked file into `CodeBuffer` and moves the image into `bank`, leaving 0xFF behind.
void LoadBank(const loadfile::ImageFile& file, std::int32_t lastCell, tongxun::VskImages& images,
              tongxun::VskCells& bank, std::int32_t& bankMaximum, WriterView& view) {
  file.StoreInto(loadfile::CodeTarget(images, lastCell), view);
  bankMaximum = images.CodeMax;
  const auto image = images.CodeBuffer.begin();
  std::copy_n(image, bankMaximum + 1, bank.begin());
  std::fill_n(image, bankMaximum + 1, std::uint8_t{0xFF});
}

}  // namespace

void Load_Vsk830_NormalFile(const std::string& name, std::int32_t lastCell,
                            tongxun::VskImages& images, IspView& view) {
  if (!name.empty()) {
    const loadfile::Format& format = loadfile::FormatOf(name, loadfile::kOneFileFormats);
    const auto file =
        loadfile::ReadImage(name, format, loadfile::CodeTarget(images, lastCell), view);
    if (!file) return;
    images.CheckCode();
    view.ShowInBox(ImageBox::MaximumAddress, HexText(images.CodeMax));
    view.ShowInBox(ImageBox::SoftwareCrc, HexText(images.CodeCrc));
    view.ShowInBox(ImageBox::Checksum, HexText(images.CodeSum));
    view.ShowInBox(ImageBox::HardwareCrc, "");
    images.CodeLoaded = true;
    images.CodeFiles = {*file};
  }
  view.ShowInBox(ImageBox::FileName, name);
}

void Load_Vsk630_NormalFile(const std::string& name, std::int32_t lastCell,
                            tongxun::VskImages& images, IspView& view) {
  if (!name.empty()) {
    const loadfile::Format& format = loadfile::FormatOf(name, loadfile::kPairFormats);
    const auto last = static_cast<std::size_t>(lastCell);
    const loadfile::ImageFile file0(name, format, last);
    const loadfile::ImageFile file1(std::string(WithoutLastCharacter(name)) + "1", format, last,
                                    loadfile::Missing::Empty);
    if (!file0.Ok()) return file0.Refuse(view);
    if (!file1.Ok()) return file1.Refuse(view);

    view.ClearPrintedLines();
    LoadBank(file0, lastCell, images, images.CodeBank0, images.CodeBank0Max, view);
    LoadBank(file1, lastCell, images, images.CodeBank1, images.CodeBank1Max, view);
    images.SumBanks();
    images.CrcBanks();
    images.CodeLoaded = true;
    images.CodeFiles.clear();
    images.BankFiles = {file0.Loaded(), file1.Loaded()};
    view.ShowInBox(ImageBox::MaximumAddress,
                   HexText(images.CodeBank0Max) + "  " + HexText(images.CodeBank1Max));
    view.ShowInBox(ImageBox::Checksum, HexText(images.CodeSum));
    view.ShowInBox(ImageBox::SoftwareCrc, HexText(images.CodeCrc));
    view.ShowInBox(ImageBox::HardwareCrc, "");
    loadfile::TellNotes(file0.Notes() + file1.Notes(), view);
  }
  view.ShowInBox(ImageBox::FileName, name);
}
