// The RTD2120 writer's run: which banks, which operation, and the comparison of the CRCs.
#pragma once

#include "bus/bus_timing.h"
#include "bus/iic_port.h"
#include "rtd2120/rtd_images.h"
#include "rtd2120/rtd_load.h"
#include "rtd2120/rtd_operations.h"
#include "run_log/run_report.h"

namespace tongxun2120 {

enum class RtdBankMode { First = 0, Second = 1, Both = 2 };
enum class RtdOperateMode { Automatic = 0, EraseOnly = 1 };

/// State and commands outlive the window, which passes itself to each call.
class RtdWriter {
 public:
  /// `report` is told of every run that sends an erase or an image.
  RtdWriter(IicPort& port, RtdLink& link, RtdOperations& operations, tongxun::BusTiming& timing,
            RtdImages& images, RunReport& report)
      : port_(port),
        link_(link),
        operations_(operations),
        timing_(timing),
        images_(images),
        report_(report) {}

  RtdBankMode BankMode = RtdBankMode::First;
  RtdOperateMode OperateMode = RtdOperateMode::Automatic;

  /// Loads an image for the bank. Fails when the file was refused.
  Result<loadfile::ImageFacts> Load(const std::string& file, Bank bank, RtdView& view) {
    return Load_RTD2120_NormalFile(file, bank, images_, view);
  }

  /// The "Run" button. ISP mode is left after an automatic run, not after an erase-only one.
  /// Returns what came of it; only a run that sent an erase or a page is told to the report.
  RunLine Run(RtdView& view);

 private:
  bool ImagesAreMeant(RtdBankMode banks, RtdView& view);
  void WriteLoadedBanks(RtdBankMode banks, RtdLog& log, RtdView& view);
  /// Erases the chip, writes and verifies the first bank. False when the chip stopped answering:
  /// the run ends then.
  bool AutoWriteBank1(RtdLog& log, RtdView& view);
  /// Writes and verifies the second bank, without an erase of its own. False as above.
  bool AutoWriteBank2(RtdLog& log, RtdView& view);
  bool Prepare(Bank bank, const char* missingMessage, RtdLog& log, RtdView& view);
  bool Erase(RtdLog& log);
  bool WriteAndVerify(Bank bank, RtdLog& log);

  IicPort& port_;
  RtdLink& link_;
  RtdOperations& operations_;
  tongxun::BusTiming& timing_;
  RtdImages& images_;
  RunReport& report_;
  RunLine line_;  // of the run that goes on
};

}  // namespace tongxun2120
