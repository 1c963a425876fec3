// The writer window's commands on a VSK chip: what "Run" does, and paging through the data display.
#pragma once

#include <cstdint>
#include <string>

#include "bus/iic_port.h"
#include "image/readers.h"
#include "run_log/run_report.h"
#include "vsk/isp_operations.h"
#include "vsk/isp_view.h"
#include "vsk/vsk_images.h"

/// What "Run" does; the values follow the order of the options.
enum class RunChoice {
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
  /// `report` is told of every run that sends an erase or an image.
  VskWriter(IicPort& port, IspOperations& isp, tongxun::VskImages& images, RunReport& report)
      : port_(port), isp_(isp), images_(images), report_(report) {}

  RunChoice IspOperate = RunChoice::Program;
  bool LoadPageView = false;  // the data display pages through the loaded image
  bool ReadPageView = false;  // the data display pages through the chip
  std::int32_t LoadPage = 0;  // page 0..255 of the image last shown
  std::int32_t ReadPage = 0;  // page 0..255 last requested from the chip

  /// Loads a file, a UTF-8 name, as the image for the chip that is selected. An empty name: the
  /// operator chose none. Fails when the file was refused.
  Result<loadfile::ImageFacts> Load(const std::string& file, IspView& view);

  /// The "go to isp mode" and "quit isp mode" options: what the operation returns.
  bool GoToIspMode(IspView& view);
  bool QuitIspMode(IspView& view);

  /// The "Run" button. Returns what came of it: empty for a run that sent neither an erase nor an
  /// image.
  RunLine Run(IspView& view);
  /// The menu commands "Erase all" and "Program": `operation` at once, and for later runs too.
  void RunFromMenu(RunChoice operation, IspView& view);

  /// Page Down and Page Up in the data display. Afterwards "Run" reads or shows a page, whatever
  /// it did before: `behind`.
  void StepPage(RunChoice step, RunChoice behind, IspView& view);

  /// Asks about each file of the image that has changed since it was loaded; false at an answer
  /// that is no. A run to program begins with it.
  bool ImageIsMeant(IspView& view) const;

 private:
  void BeginOnPort();
  bool MayProgram(IspView& view) const;
  bool ImageIsLoaded(IspView& view) const;
  RunLine TellRun(RunLine line);
  RunLine ProgramImage(IspView& view);
  void DoPageLoad(IspView& view);
  void ShowNeighbour(int step, IspView& view);
  void ShowLoadPage(IspView& view) const;

  IicPort& port_;
  IspOperations& isp_;
  tongxun::VskImages& images_;
  RunReport& report_;
};
