#include "vsk/vsk_load.h"

#include <algorithm>

#include "text/hex_text.h"
#include "vsk/vsk_model.h"

using loadfile::ImageFacts;

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

Result<ImageFacts> Load_Vsk830_NormalFile(const std::string& name, const VskModel& model,
                                          tongxun::VskImages& images, IspView& view) {
  ImageFacts facts;
  if (!name.empty()) {
    const loadfile::Format& format = loadfile::FormatOf(name, model.formats);
    const auto taken =
        loadfile::ReadImage(name, format, loadfile::CodeTarget(images, model.lastCell), view);
    if (!taken.Ok()) return taken;
    images.CheckCode();
    facts = {.maximumAddress = HexText(images.CodeMax),
             .checksum = HexText(images.CodeSum),
             .crc = HexText(images.CodeCrc),
             .dataBytes = taken->dataBytes,
             .wrongStartCodes = taken->wrongStartCodes,
             .emptyTexts = taken->emptyTexts,
             .notes = taken->notes};
    view.ShowInBox(ImageBox::MaximumAddress, facts.maximumAddress);
    view.ShowInBox(ImageBox::SoftwareCrc, facts.crc);
    view.ShowInBox(ImageBox::Checksum, facts.checksum);
    view.ShowInBox(ImageBox::HardwareCrc, "");
    images.CodeLoaded = true;
    images.CodeFiles = {taken->file};
  }
  view.ShowInBox(ImageBox::FileName, name);
  return facts;
}

Result<ImageFacts> Load_Vsk630_NormalFile(const std::string& name, const VskModel& model,
                                          tongxun::VskImages& images, IspView& view) {
  ImageFacts facts;
  if (!name.empty()) {
    const loadfile::Format& format = loadfile::FormatOf(name, model.formats);
    const auto last = static_cast<std::size_t>(model.lastCell);
    const loadfile::ImageFile file0(name, format, last);
    const loadfile::ImageFile file1(std::string(WithoutLastCharacter(name)) + "1", format, last,
                                    loadfile::Missing::Empty);
    if (!file0.Ok()) return file0.Refuse(view);
    if (!file1.Ok()) return file1.Refuse(view);

    view.ClearPrintedLines();
    LoadBank(file0, model.lastCell, images, images.CodeBank0, images.CodeBank0Max, view);
    LoadBank(file1, model.lastCell, images, images.CodeBank1, images.CodeBank1Max, view);
    images.SumBanks();
    images.CrcBanks();
    images.CodeLoaded = true;
    const loadfile::TakenFile taken0 = file0.Taken();
    const loadfile::TakenFile taken1 = file1.Taken();
    images.CodeFiles.clear();
    images.BankFiles = {taken0.file, taken1.file};
    facts = {.maximumAddress = HexText(images.CodeBank0Max) + "  " + HexText(images.CodeBank1Max),
             .checksum = HexText(images.CodeSum),
             .crc = HexText(images.CodeCrc),
             .dataBytes = taken0.dataBytes + taken1.dataBytes,
             .wrongStartCodes = taken0.wrongStartCodes + taken1.wrongStartCodes,
             .emptyTexts = taken0.emptyTexts + taken1.emptyTexts};
    view.ShowInBox(ImageBox::MaximumAddress, facts.maximumAddress);
    view.ShowInBox(ImageBox::Checksum, facts.checksum);
    view.ShowInBox(ImageBox::SoftwareCrc, facts.crc);
    view.ShowInBox(ImageBox::HardwareCrc, "");
    facts.notes = loadfile::TellNotes(taken0.notes + taken1.notes, view);
  }
  view.ShowInBox(ImageBox::FileName, name);
  return facts;
}
