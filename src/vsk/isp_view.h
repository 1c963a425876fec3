// What the VSK loads and operations need of the writer window. Free of any window toolkit, so that
// a test can keep a transcript of exact texts, colours, order and repaints.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "image/writer_view.h"
#include "run_log/run_result.h"

enum class StatusLabel {
  IspMode,    // Label2, beside "Isp Mode Status"
  Operation,  // Label3, beside "Isp Operate Status"
};

enum class StatusColour { Black, Red };

/// The boxes that describe the loaded image and what the chip made of it, from the top:
/// "MCU File", "MaxAddress", "CheckSum", "S/W CRC", "H/W CRC".
enum class ImageBox { FileName, MaximumAddress, Checksum, SoftwareCrc, HardwareCrc };

class IspView : public WriterView {
 public:
  virtual void SetStatusColour(StatusLabel label, StatusColour colour) = 0;
  virtual void SetStatusText(StatusLabel label, std::string_view text) = 0;
  /// Redraws the label at once, before the operation goes on.
  virtual void RepaintStatus(StatusLabel label) = 0;

  /// Replaces the whole text of the data display (`Text1`). Lines end with CR LF.
  virtual void ShowData(std::string_view text) = 0;
  virtual void ShowInBox(ImageBox box, std::string_view text) = 0;

  /// Selects the "quit isp mode" option, which runs its action when it was not selected before.
  virtual void SelectQuitOption() = 0;
  virtual void DeselectQuitOption() = 0;

  /// A modal input box. Empty when the operator gave no answer or cancelled.
  virtual std::string AskText(std::string_view prompt, std::string_view title,
                              std::string_view answer) = 0;
};

/// Colour, then text.
void ShowStatus(IspView& view, StatusLabel label, StatusColour colour, std::string_view text);
/// Black `good` when `holds`, else red `bad`; returns what was shown.
RunResult ShowResult(IspView& view, StatusLabel label, bool holds, std::string_view good,
                     std::string_view bad);
void ClearStatus(IspView& view);

/// Asks for a page number with the input box, again until it is two hex digits. Nothing when the
/// operator gave no answer.
std::optional<std::int32_t> AskPageNumber(IspView& view);
/// The same for an address of four hex digits.
std::optional<std::int32_t> AskAddress(IspView& view, std::string_view prompt,
                                       std::string_view answer);
