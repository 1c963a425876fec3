#include "image/vsk_load.h"

#include <string>

#include "image/hex_number.h"
#include "image/readers.h"

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
