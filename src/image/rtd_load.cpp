#include "image/rtd_load.h"

#include <algorithm>

#include "image/hex_number.h"

void Load_RTD2120_NormalFile(int ucBank, tongxun::CodeBuffers& buffers, RtdLoadView& view) {
  using namespace loadfile;
  const std::string name = view.ChooseFile(kOneFileFilters);
  if (name.empty()) return;
  const bool loaded = KindOf(name, "HEX") == FileKind::Hex ? ReadRtdHexFile(name, buffers, view)
                                                           : ReadRtdBinFile(name, buffers, view);
  if (!loaded) return;

  auto& staged = buffers.RtdLoadBuffer;
  if (buffers.RtdLoadMax < 0xFFFF) {
    std::fill(staged.begin() + buffers.RtdLoadMax + 1, staged.begin() + 0x10000,
              std::uint8_t{0xFF});
  }
  const int bank = ucBank == 0 ? 1 : 2;
  (bank == 1 ? buffers.RtdBank1Buffer : buffers.RtdBank2Buffer) = staged;
  (bank == 1 ? buffers.Bank1Max : buffers.Bank2Max) = buffers.RtdLoadMax;
  buffers.SumRtdBank(bank);
  (bank == 1 ? buffers.Bank1Loaded : buffers.Bank2Loaded) = true;
  view.ShowBankRow(bank, {.file = name,
                          .maximumAddress = std::to_string(buffers.RtdLoadMax),
                          .checksum = HexText(buffers.RtdBankSum)});
}
