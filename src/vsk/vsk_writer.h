// The writer window's commands on a VSK chip: what "Run" does, and paging through the data display.
#pragma once

#include <cstdint>
#include <functional>

#include "bus/iic_port.h"
#include "run_log/run_log.h"
#include "vsk/isp_operations.h"
#include "vsk/isp_view.h"
#include "vsk/vsk_images.h"
#include "vsk/vsk_load.h"

/// What "Run" does; the values follow the order of the options.
enum class IspOperation {
  PageErase = 1,
  EraseAll = 2,
  Program = 3,
  PageRead = 4,
  PageLoad = 5,
  NextPage = 6,
  PreviousPage = 7,
};

/// State and commands outlive the window, which passes itself to each call.
class VskWriter {
 public:
  VskWriter(IicPort& port, IspOperations& isp, tongxun::VskImages& images)
      : port_(port), isp_(isp), images_(images) {}

  IspOperation IspOperate = IspOperation::Program;
  bool LoadPageView = false;  // the data display pages through the loaded image
  bool ReadPageView = false;  // the data display pages through the chip
  std::int32_t LoadPage = 0;  // page 0..255 of the image last shown

  /// Told of every run that sent an erase or an image, when it has ended.
  std::function<void(const RunLine&)> RunEnded = [](const RunLine&) {};

  /// Loads an image for the chip that is selected.
  void Load(VskLoadView& view);

  /// The "go to isp mode" and "quit isp mode" options.
  void GoToIspMode(IspView& view);
  void QuitIspMode(IspView& view);

  /// The "Run" button.
  void Run(IspView& view);
  /// The menu commands "Erase all" and "Program": `operation` at once, and for later runs too.
  void RunFromMenu(IspOperation operation, IspView& view);

  /// Page Down and Page Up in the data display. Afterwards "Run" reads or shows a page, whatever
  /// it did before.
  void StepPage(IspOperation step, IspView& view);

 private:
  void BeginOnPort();
  bool ImageIsMeant(IspView& view) const;
  void TellRun(RunLine line) const;
  RunLine ProgramImage(IspView& view);
  bool PrepareLoadPage(IspView& view);
  void ShowNeighbour(int step, IspView& view);
  void ShowLoadPage(IspView& view) const;

  IicPort& port_;
  IspOperations& isp_;
  tongxun::VskImages& images_;
};
