// The ISP operations on a VSK chip: enter and quit ISP mode, erase, program and verify, read back.
// Each sends the frames, interprets the acknowledges and reports in the window's two status labels.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "bus/bus_timing.h"
#include "run_log/run_report.h"
#include "vsk/isp_frames.h"
#include "vsk/isp_view.h"
#include "vsk/vsk_images.h"
#include "vsk/vsk_model.h"

/// What came of reading a page.
enum class PageRead {
  Refused,  // the page could not be selected, and "Page Read fail" is shown
  Silent,   // selected, but nothing was sent: `IspRxBuf` holds what it held
  Done,
};

/// What the mode label shows of a chip that did not enter ISP mode, and of one that did not leave
/// it.
inline constexpr const char* kNotEntered = "isp mode is no exist";
inline constexpr const char* kNotLeft = "isp mode is not out";

class IspOperations {
 public:
  /// `report` is told when the first frame of an erase goes out: a run begins.
  IspOperations(tongxun::IspFrames& frames, tongxun::BusTiming& timing, tongxun::VskImages& images,
                RunReport& report)
      : frames_(frames), timing_(timing), images_(images), report_(report) {}

  VskChip ChipSelect = VskChip::Vsk830;
  /// The only mode state: the operations trust it and never ask the chip.
  bool IspModeOn = false;
  /// What the chip reported after it was programmed last; -1 before.
  std::int32_t ReportedCrc = -1;

  /// The chip that is programmed.
  const VskModel& Model() const { return ModelOf(ChipSelect); }

  /// True when the chip acknowledged all security codes.
  bool EnterIspMode(IspView& view);
  /// True when the chip acknowledged, that is when it is still in ISP mode.
  bool QuitIspMode(IspView& view);

  /// True when the chip acknowledged the follow-up frame.
  bool ChipErase();
  /// Erases the 128-byte pages of `start`..`end` (0..0xFFFF; end 0 means 0xFFFF). Only addresses up
  /// to 0x7FFF have a page number that fits a byte: a range beyond is clipped when the operator
  /// agrees, and a start beyond sends nothing. Failed when the last follow-up frame was
  /// acknowledged.
  RunResult ErasePageRange(std::int32_t start, std::int32_t end, IspView& view);

  /// Programs the chip's banks from the loaded image, reads the chip's CRC over all of them and
  /// quits ISP mode. A refused page command ends a bank but the last silently. Returns what was
  /// shown of the programming.
  RunResult ProgramImage(IspView& view);

  /// Reads page 0..255 into `IspRxBuf`.
  PageRead ReadChipPage(std::int32_t page, IspView& view);
  /// Shows `IspRxBuf` in the data display as page 0..255.
  void ShowReadPage(std::int32_t page, IspView& view) const;

  // What "Run" does. Each refuses to run outside ISP mode. Those that change the chip return what
  // they showed last.
  RunResult DoPageErase(IspView& view);
  RunResult DoEraseAll(IspView& view);
  RunResult DoProgram(IspView& view);
  /// `page`: set to the one that the operator asked for.
  void DoPageRead(std::int32_t& page, IspView& view);

 private:
  bool BeginsInIspMode(std::string_view inMode, std::string_view outside, IspView& view) const;
  bool SendFollowUp();
  RunResult EraseAndShow(IspView& view);
  void WaitBitDelays(int count);
  int OfAllBanks(const VskBank& bank, int percent) const;
  /// Nothing when every command and the last data frame were acknowledged, else the page of the one
  /// that was not.
  std::optional<std::int32_t> SendPages(const VskBank& bank, std::int32_t maximum, IspView& view);
  bool SendPage(const VskBank& bank, std::int32_t page, std::int32_t maximum, int& shown,
                IspView& view);
  void ShowProgress(const VskBank& bank, std::int32_t address, std::int32_t maximum, int& shown,
                    IspView& view);

  tongxun::IspFrames& frames_;
  tongxun::BusTiming& timing_;
  tongxun::VskImages& images_;
  RunReport& report_;
};
