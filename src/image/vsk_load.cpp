#include "image/vsk_load.h"

#include <algorithm>
#include <string>

#include "image/hex_number.h"
#include "image/readers.h"

namespace {

/// Reads a checked file into `CodeBuffer` and moves the image into `bank`, leaving 0xFF behind.
void LoadBank(const loadfile::ImageFile& file, tongxun::CodeBuffers& buffers,
              tongxun::VskCells& bank, std::int32_t& bankMaximum, FileView& view) {
  file.StoreInto({buffers.CodeBuffer, buffers.CodeMax}, view);
  bankMaximum = buffers.CodeMax;
  const auto image = buffers.CodeBuffer.begin();
  std::copy_n(image, bankMaximum + 1, bank.begin());
  std::fill_n(image, bankMaximum + 1, std::uint8_t{0xFF});
}

}  // namespace

void Load_Vsk830_NormalFile(tongxun::CodeBuffers& buffers, VskLoadView& view) {
  using namespace loadfile;
  const std::string name = view.ChooseFile(kOneFileFilters);
  if (!name.empty()) {
    const bool loaded = KindOf(name, "HEX") == FileKind::Hex ? ReadHexFile(name, buffers, view)
                                                             : ReadBinFile(name, buffers, view);
    if (!loaded) return;
    buffers.CheckCode();
    view.ShowMaximumAddress(HexText(buffers.CodeMax));
    view.ShowSoftwareCrc(HexText(buffers.CodeCrc));
    view.ShowChecksum(HexText(buffers.CodeSum));
    view.ShowHardwareCrc("");
    buffers.CodeLoaded = true;
  }
  view.ShowFileName(name);
}

void Load_Vsk630_NormalFile(tongxun::CodeBuffers& buffers, VskLoadView& view) {
  using namespace loadfile;
  const std::string name = view.ChooseFile(kPairFilters);
  if (!name.empty()) {
    const FileKind kind = KindOf(name, "H00");
    const std::size_t lastCell = buffers.CodeBuffer.size() - 1;
    const ImageFile file0(name, kind, lastCell);
    const ImageFile file1(name.substr(0, name.size() - 1) + "1", kind, lastCell);
    if (file0.Refused()) return file0.Refuse(view);
    if (file1.Refused()) return file1.Refuse(view);

    LoadBank(file0, buffers, buffers.CodeBank0, buffers.CodeBank0Max, view);
    LoadBank(file1, buffers, buffers.CodeBank1, buffers.CodeBank1Max, view);
    buffers.SumBanks();
    buffers.CrcBanks();
    buffers.CodeLoaded = true;
    view.ShowMaximumAddress(HexText(buffers.CodeBank0Max) + "  " + HexText(buffers.CodeBank1Max));
    view.ShowChecksum(HexText(buffers.CodeSum));
    view.ShowSoftwareCrc(HexText(buffers.CodeCrc));
    view.ShowHardwareCrc("");
  }
  view.ShowFileName(name);
}
