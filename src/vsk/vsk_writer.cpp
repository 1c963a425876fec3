#include "vsk/vsk_writer.h"

#include <algorithm>
#include <span>
#include <utility>

#include "image/cells.h"
#include "image/page_text.h"
#include "text/hex_text.h"

Result<loadfile::ImageFacts> VskWriter::Load(const std::string& file, IspView& view) {
  const VskModel& model = isp_.Model();
  return model.load(file, model, images_, view);
}

/// A chip behind a port that has gone cannot be told from one that has left ISP mode.
void VskWriter::BeginOnPort() {
  if (!port_.StillThere()) isp_.IspModeOn = false;
}

bool VskWriter::GoToIspMode(IspView& view) {
  BeginOnPort();
  ClearStatus(view);
  return isp_.EnterIspMode(view);
}

bool VskWriter::QuitIspMode(IspView& view) {
  BeginOnPort();
  ClearStatus(view);
  return isp_.QuitIspMode(view);
}

void VskWriter::RunFromMenu(RunChoice operation, IspView& view) {
  IspOperate = operation;
  LoadPageView = false;
  ReadPageView = false;
  Run(view);
}

void VskWriter::StepPage(RunChoice step, RunChoice behind, IspView& view) {
  IspOperate = step;
  Run(view);
  IspOperate = behind;
}

RunLine VskWriter::Run(IspView& view) {
  report_.Forget();
  BeginOnPort();
  if (!isp_.IspModeOn) {
    view.SetStatusText(StatusLabel::IspMode, "isp mode is not exist");
    return {};
  }
  view.SetStatusText(StatusLabel::IspMode, "isp mode is exist");

  switch (IspOperate) {
    case RunChoice::PageErase:
      return TellRun({.operation = "Page Erase", .result = isp_.DoPageErase(view)});
    case RunChoice::EraseAll:
      return TellRun({.operation = "Erase All", .result = isp_.DoEraseAll(view)});
    case RunChoice::Program:
      if (MayProgram(view)) return TellRun(ProgramImage(view));
      break;
    case RunChoice::PageRead:
      LoadPageView = false;
      ReadPageView = true;
      isp_.DoPageRead(ReadPage, view);
      break;
    case RunChoice::PageLoad:
      DoPageLoad(view);
      break;
    case RunChoice::NextPage:
      ShowNeighbour(+1, view);
      break;
    case RunChoice::PreviousPage:
      ShowNeighbour(-1, view);
      break;
  }
  return {};
}

/// While it asks, a screen reader can choose the other chip.
bool VskWriter::MayProgram(IspView& view) const {
  const VskChip chip = isp_.ChipSelect;
  return ImageIsLoaded(view) && ImageIsMeant(view) && isp_.ChipSelect == chip;
}

bool VskWriter::ImageIsLoaded(IspView& view) const {
  if (!images_.CodeLoaded) view.ShowMessage("the hexfile is not load");
  return images_.CodeLoaded;
}

bool VskWriter::ImageIsMeant(IspView& view) const {
  return loadfile::AgreedTo(images_.*isp_.Model().files, view);
}

RunLine VskWriter::TellRun(RunLine line) {
  line.chip = isp_.Model().name;
  return report_.End(std::move(line));
}

RunLine VskWriter::ProgramImage(IspView& view) {
  RunLine line{.operation = "Program", .result = isp_.DoProgram(view)};
  RunImage image{.crc = images_.CodeCrc, .chipCrc = isp_.ReportedCrc};
  const auto& files = images_.*isp_.Model().files;
  if (!files.empty()) image.file = files.front().name;
  for (const VskBank& bank : isp_.Model().banks) {
    image.size += tongxun::UsedCells(images_.*bank.cells, images_.*bank.maximum).size();
  }
  line.images.push_back(image);
  return line;
}

void VskWriter::DoPageLoad(IspView& view) {
  if (!ImageIsLoaded(view)) return;
  ReadPageView = false;
  LoadPageView = true;
  const auto page = AskPageNumber(view);
  if (!page) return;
  LoadPage = *page;
  ShowLoadPage(view);
}

/// Shows the page `step` (+1 or -1) further in the active view, within 0..255.
void VskWriter::ShowNeighbour(int step, IspView& view) {
  const auto neighbour = [step](std::int32_t page) { return std::clamp(page + step, 0, 255); };
  if (LoadPageView) {
    ReadPage = 0;
    LoadPage = neighbour(LoadPage);
    ShowLoadPage(view);
  } else if (ReadPageView) {
    LoadPage = 0;
    ReadPage = neighbour(ReadPage);
    isp_.ReadChipPage(ReadPage, view);
    isp_.ShowReadPage(ReadPage, view);
  } else {
    LoadPage = 0;
    ReadPage = 0;
  }
}

void VskWriter::ShowLoadPage(IspView& view) const {
  const std::span<const std::uint8_t> cells = images_.CodeBuffer;
  const auto bytes = static_cast<std::size_t>(isp_.Model().pageBytes);
  const auto first = static_cast<std::size_t>(LoadPage) * bytes;
  view.ShowData(PageText(cells.subspan(first, bytes), LoadPage, " (Load Hex File Code)"));
}
