// The ISP operations on a VSK chip: enter and quit ISP mode, erase, program and verify, read back.
// Each sends the frames, interprets the acknowledges and reports in the window's two status labels.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "bus/bus_timing.h"
#include "image/code_buffers.h"
#include "vsk/isp_frames.h"
#include "vsk/isp_view.h"

enum class VskChip { Vsk830 = 0, Vsk630 = 1 };

class IspOperations {
 public:
  IspOperations(tongxun::IspFrames& frames, tongxun::BusTiming& timing,
                tongxun::CodeBuffers& buffers)
      : frames_(frames), timing_(timing), buffers_(buffers) {}

  VskChip ChipSelect = VskChip::Vsk830;
  /// The only mode state: the operations trust it and never ask the chip.
  bool IspModeOn = false;
  std::int32_t ReadPage = 0;  // page 0..255 last requested from the chip

  /// True when the chip acknowledged all security codes.
  bool EnterIspMode(IspView& view);
  /// True when the chip acknowledged, that is when it is still in ISP mode.
  bool QuitIspMode(IspView& view);

  /// True when the chip acknowledged the follow-up frame.
  bool ChipErase();
  /// Erases the 128-byte pages of `start`..`end` (0..0xFFFF; end 0 means 0xFFFF). Only addresses up
  /// to 0x7FFF have a page number that fits a byte; a range beyond is said and clipped. Returns the
  /// last follow-up frame's acknowledge: true means that the erase failed.
  bool ErasePageRange(std::int32_t start, std::int32_t end, IspView& view);

  /// Programs `CodeBuffer`[0..maximum], reads the chip's CRC and quits ISP mode.
  void ProgramImage(std::int32_t maximum, IspView& view);
  /// Programs `CodeBank0`[0..maximum]; a refused page command ends it silently.
  void ProgramBank0(std::int32_t maximum, IspView& view);
  /// Programs `CodeBank1`[0..maximum], reads the chip's CRC over both banks and quits ISP mode.
  void ProgramBank1(std::int32_t maximum, IspView& view);

  /// Reads page 0..255 into `IspRxBuf`. True when the page-select frame was acknowledged.
  bool ReadChipPage(std::int32_t page, IspView& view);

  // What "Run" does. Each refuses to run outside ISP mode.
  void DoPageErase(IspView& view);
  void DoEraseAll(IspView& view);
  void DoProgram(IspView& view);
  void DoPageRead(IspView& view);

 private:
  struct BankProgram;

  bool SendCommand(int command, int argument);
  bool SendFollowUp();
  /// True when every command and the last data frame were acknowledged.
  bool SendPages(const BankProgram& bank, std::int32_t maximum, IspView& view);
  int FillPage(const BankProgram& bank, int page, std::int32_t maximum, int& shown, IspView& view);
  void EndProgramming(bool programmed, IspView& view);

  tongxun::IspFrames& frames_;
  tongxun::BusTiming& timing_;
  tongxun::CodeBuffers& buffers_;
};

/// Colour, then text.
void ShowStatus(IspView& view, StatusLabel label, StatusColour colour, std::string_view text);
void ClearStatus(IspView& view);
void ShowBlankResult(bool erased, IspView& view);

/// Asks for a page number with the input box, again until it is two hex digits. Nothing when the
/// operator gave no answer.
std::optional<std::int32_t> AskPageNumber(IspView& view);
/// The same for an address of four hex digits.
std::optional<std::int32_t> AskAddress(IspView& view, std::string_view prompt,
                                       std::string_view answer);
