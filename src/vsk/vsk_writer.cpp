#include "vsk/vsk_writer.h"

#include <algorithm>
#include <span>

#include "image/cells.h"
#include "image/page_text.h"
#include "text/hex_text.h"

void VskWriter::Load(VskLoadView& view) {
  const VskModel& model = isp_.Model();
  model.load(model.lastCell, images_, view);
}

/// A chip behind a port that has gone cannot be told from one that has left ISP mode.
void VskWriter::BeginOnPort() {
  if (!port_.StillThere()) isp_.IspModeOn = false;
}

void VskWriter::GoToIspMode(IspView& view) {
  BeginOnPort();
  ClearStatus(view);
  isp_.EnterIspMode(view);
}

void VskWriter::QuitIspMode(IspView& view) {
  BeginOnPort();
  ClearStatus(view);
  isp_.QuitIspMode(view);
}

void VskWriter::RunFromMenu(IspOperation operation, IspView& view) {
  IspOperate = operation;
  LoadPageView = false;
  ReadPageView = false;
  Run(view);
}

void VskWriter::StepPage(IspOperation step, IspView& view) {
  IspOperate = step;
  Run(view);
  IspOperate = view.PageReadSelected() ? IspOperation::PageRead : IspOperation::PageLoad;
}

void VskWriter::Run(IspView& view) {
  BeginOnPort();
  if (!isp_.IspModeOn) {
    view.SetStatusText(StatusLabel::IspMode, "isp mode is not exist");
    return;
  }
  view.SetStatusText(StatusLabel::IspMode, "isp mode is exist");

  switch (IspOperate) {
    case IspOperation::PageErase:
      isp_.DoPageErase(view);
      return TellRun({.operation = "Page Erase"}, view);
    case IspOperation::EraseAll:
      isp_.DoEraseAll(view);
      return TellRun({.operation = "Erase All"}, view);
    case IspOperation::Program:
      if (!images_.CodeLoaded) return view.ShowMessage("the hexfile is not load");
      isp_.DoProgram(view);
      return TellRun(ImageLine(), view);
    case IspOperation::PageRead:
      LoadPageView = false;
      ReadPageView = true;
      return isp_.DoPageRead(view);
    case IspOperation::PageLoad:
      if (PrepareLoadPage(view)) ShowLoadPage(view);
      return;
    case IspOperation::NextPage:
      return ShowNeighbour(+1, view);
    case IspOperation::PreviousPage:
      return ShowNeighbour(-1, view);
  }
}

void VskWriter::TellRun(RunLine line, const IspView& view) const {
  line.chip = isp_.Model().name;
  line.result = view.StatusText(StatusLabel::Operation);
  if (!line.result.empty()) RunEnded(line);  // else the operator gave no answer
}

RunLine VskWriter::ImageLine() const {
  RunLine line{.operation = "Program",
               .file = images_.File,
               .crc = HexText(images_.CodeCrc),
               .chipCrc = HexText(isp_.ReportedCrc)};
  for (const VskBank& bank : isp_.Model().banks) {
    line.size += tongxun::UsedCells(images_.*bank.cells, images_.*bank.maximum).size();
  }
  return line;
}

bool VskWriter::PrepareLoadPage(IspView& view) {
  if (!images_.CodeLoaded) {
    view.ShowMessage("the hexfile is not load");
    return false;
  }
  ReadPageView = false;
  LoadPageView = true;
  const auto page = AskPageNumber(view);
  if (!page) return false;
  LoadPage = *page;
  return true;
}

/// Shows the page `step` (+1 or -1) further in the active view, within 0..255.
void VskWriter::ShowNeighbour(int step, IspView& view) {
  const auto neighbour = [step](std::int32_t page) { return std::clamp(page + step, 0, 255); };
  if (LoadPageView) {
    isp_.ReadPage = 0;
    LoadPage = neighbour(LoadPage);
    ShowLoadPage(view);
  } else if (ReadPageView) {
    LoadPage = 0;
    isp_.ReadPage = neighbour(isp_.ReadPage);
    isp_.ReadChipPage(isp_.ReadPage, view);
    isp_.ShowReadPage(isp_.ReadPage, view);
  } else {
    LoadPage = 0;
    isp_.ReadPage = 0;
  }
}

void VskWriter::ShowLoadPage(IspView& view) const {
  const std::span<const std::uint8_t> cells = images_.CodeBuffer;
  const auto bytes = static_cast<std::size_t>(isp_.Model().pageBytes);
  const auto first = static_cast<std::size_t>(LoadPage) * bytes;
  view.ShowData(PageText(cells.subspan(first, bytes), LoadPage, " (Load Hex File Code)"));
}
