// What the VSK operations need of the writer window. Free of any window toolkit, so that a test can
// keep a transcript of exact texts, colours, order and repaints.
#pragma once

#include <string>
#include <string_view>

#include "image/page_view.h"

enum class StatusLabel {
  IspMode,    // Label2, beside "Isp Mode Status"
  Operation,  // Label3, beside "Isp Operate Status"
};

enum class StatusColour { Black, Red };

class IspView : public PageView {
 public:
  virtual void SetStatusColour(StatusLabel label, StatusColour colour) = 0;
  virtual void SetStatusText(StatusLabel label, std::string_view text) = 0;
  /// Redraws the label at once, before the operation goes on.
  virtual void RepaintStatus(StatusLabel label) = 0;

  virtual void ShowHardwareCrc(std::string_view text) = 0;  // Text6, "H/W CRC"

  /// Selects the "quit isp mode" option, which runs its action when it was not selected before.
  virtual void SelectQuitOption() = 0;
  virtual void DeselectQuitOption() = 0;
  /// Whether the "Page Read" option is the selected operation.
  virtual bool PageReadSelected() const = 0;

  /// A modal input box. Empty when the operator gave no answer or cancelled.
  virtual std::string AskText(std::string_view prompt, std::string_view title,
                              std::string_view answer) = 0;
  /// A modal message box with an OK button.
  virtual void ShowMessage(std::string_view message) = 0;
};
