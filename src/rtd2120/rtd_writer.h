// The RTD2120 writer's run: which banks, which operation, and the comparison of the CRCs.
#pragma once

#include "bus/bus_timing.h"
#include "image/code_buffers.h"
#include "rtd2120/rtd_operations.h"

enum class RtdBankMode { First = 0, Second = 1, Both = 2 };
enum class RtdOperateMode { Automatic = 0, EraseOnly = 1 };

/// State and commands outlive the window, which passes itself to each call.
class RtdWriter {
 public:
  RtdWriter(tongxun2120::RtdLink& link, tongxun2120::RtdOperations& operations,
            tongxun::BusTiming& timing, tongxun::CodeBuffers& buffers)
      : link_(link), operations_(operations), timing_(timing), buffers_(buffers) {}

  RtdBankMode BankMode = RtdBankMode::First;
  RtdOperateMode OperateMode = RtdOperateMode::Automatic;

  /// The "Run" button. ISP mode is left after an automatic run, not after an erase-only one.
  void Run(RtdView& view);
  /// Erases the chip, writes and verifies the first bank. False when the erase failed: nothing
  /// may be programmed then.
  bool AutoWriteBank1(RtdView& view);
  /// Writes and verifies the second bank, without an erase of its own.
  void AutoWriteBank2(RtdView& view);

 private:
  struct BankImage;

  void WriteLoadedBanks(RtdView& view);
  bool Prepare(const BankImage& image, RtdView& view);
  void WriteAndVerify(tongxun2120::Bank bank, RtdView& view);

  tongxun2120::RtdLink& link_;
  tongxun2120::RtdOperations& operations_;
  tongxun::BusTiming& timing_;
  tongxun::CodeBuffers& buffers_;
};
