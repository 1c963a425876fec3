// Programming an image and comparing the chip's CRC with it.
#include "image/hex_number.h"
#include "vsk/isp_operations.h"

namespace {

constexpr int kResetCrc = 0xD0;
constexpr int kPageBytes = 256;
constexpr std::int32_t kLastPage = 255;  // the page number is one byte
constexpr std::uint32_t kEraseTime_ms = 1000;

}  // namespace

/// What differs between the images that a chip is programmed from.
struct IspOperations::BankProgram {
  using WriteFrame = bool (tongxun::IspFrames::*)(int address, int& count, bool stop);

  std::span<const std::uint8_t> cells;
  int command;            // selects bank and page
  WriteFrame writeFrame;  // with or without clearing bit 0 of the address
  int divisor;            // progress shown: percent / divisor + offset
  int offset;
};

/// Puts 0x00 and the page's data bytes into `IspTxBuf`, showing the progress of `shown` tenths.
/// Returns the number of data bytes.
int IspOperations::FillPage(const BankProgram& bank, int page, std::int32_t maximum, int& shown,
                            IspView& view) {
  frames_.IspTxBuf[0] = 0;
  for (int k = 0; k < kPageBytes; ++k) {
    const std::int32_t address = kPageBytes * page + k;
    if (address > maximum) {
      view.SetStatusText(StatusLabel::Operation, "finish");
      view.RepaintStatus(StatusLabel::Operation);
      return k;
    }
    // An image of one byte is done with its first byte.
    const int percent = maximum == 0 ? 100 : 100 * address / maximum;
    if (percent == 10 * shown || maximum == 0) {
      view.SetStatusText(StatusLabel::Operation,
                         "finish  " + std::to_string(percent / bank.divisor + bank.offset) + "%");
      view.RepaintStatus(StatusLabel::Operation);
      ++shown;
    }
    frames_.IspTxBuf[static_cast<std::size_t>(k) + 1] =
        bank.cells[static_cast<std::size_t>(address)];
  }
  return kPageBytes;
}

// per page: S C command page P, S A 00 data.. P
bool IspOperations::SendPages(const BankProgram& bank, std::int32_t maximum, IspView& view) {
  const auto send = [&](int address, int count) {
    return (frames_.*bank.writeFrame)(address, count, true);
  };
  int shown = 0;
  bool acknowledged = false;
  for (std::int32_t page = 0; page <= maximum / kPageBytes; ++page) {
    if (page > kLastPage) return false;
    frames_.IspTxBuf[0] = static_cast<std::int16_t>(bank.command);
    frames_.IspTxBuf[1] = static_cast<std::int16_t>(page);
    if (!send(frames_.CommandAddress(), 2)) return false;
    const int dataBytes = FillPage(bank, page, maximum, shown, view);
    acknowledged = send(frames_.DataAddress(), dataBytes + 1);
  }
  return acknowledged;
}

void IspOperations::ProgramImage(std::int32_t maximum, IspView& view) {
  const BankProgram image{buffers_.CodeBuffer, 0xA0, &tongxun::IspFrames::IspWriteFrame, 1, 0};
  EndProgramming(SendPages(image, maximum, view), view);
}

void IspOperations::ProgramBank0(std::int32_t maximum, IspView& view) {
  const BankProgram bank{buffers_.CodeBank0, 0xA0, &tongxun::IspFrames::IspWriteFrameRaw, 2, 0};
  SendPages(bank, maximum, view);
}

void IspOperations::ProgramBank1(std::int32_t maximum, IspView& view) {
  const BankProgram bank{buffers_.CodeBank1, 0xA1, &tongxun::IspFrames::IspWriteFrameRaw, 2, 50};
  EndProgramming(SendPages(bank, maximum, view), view);
}

void IspOperations::EndProgramming(bool programmed, IspView& view) {
  if (programmed) {
    ShowStatus(view, StatusLabel::Operation, StatusColour::Black, "programcode ok");
  } else {
    ShowStatus(view, StatusLabel::Operation, StatusColour::Red, "programcode fail");
  }
  view.RepaintStatus(StatusLabel::Operation);
  frames_.ReadHwCrc();
  view.ShowHardwareCrc(HexText(frames_.HwCrc));
  QuitIspMode(view);
}

void IspOperations::DoProgram(IspView& view) {
  ClearStatus(view);
  if (!IspModeOn) {
    ShowStatus(view, StatusLabel::IspMode, StatusColour::Red, "program:isp mode is not exist");
    view.RepaintStatus(StatusLabel::IspMode);
    return;
  }
  ShowStatus(view, StatusLabel::IspMode, StatusColour::Black, "program:isp mode is exist");
  view.RepaintStatus(StatusLabel::IspMode);
  ShowBlankResult(ChipErase(), view);
  view.RepaintStatus(StatusLabel::Operation);
  timing_.WaitMilliseconds(kEraseTime_ms);

  // S C D0 P
  frames_.IspTxBuf[0] = kResetCrc;
  int count = 1;
  frames_.IspWriteFrame(frames_.CommandAddress(), count, true);

  if (ChipSelect == VskChip::Vsk630) {
    ProgramBank0(buffers_.CodeBank0Max, view);
    ProgramBank1(buffers_.CodeBank1Max, view);
  } else {
    ProgramImage(buffers_.CodeMax, view);
  }
  const bool matches = buffers_.CrcMatches(frames_.HwCrc);
  view.SetStatusText(StatusLabel::Operation, matches ? "Write Ok" : "CRC Error");
  frames_.HwCrc = 0;
}
