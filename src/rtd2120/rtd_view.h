// What the RTD2120 operations need of the writer window.
#pragma once

#include <string>
#include <string_view>

namespace tongxun2120 {

class RtdView {
 public:
  virtual ~RtdView() = default;

  /// The whole text of the status box (`WriteStatus`), lines ended by CR LF.
  virtual std::string StatusText() const = 0;
  virtual void SetStatusText(const std::string& text) = 0;
  /// Pure red, or black.
  virtual void SetStatusRed(bool red) = 0;
  /// Redraws the status box at once, before the operation goes on.
  virtual void RefreshStatus() = 0;
  /// A modal message box with an OK button.
  virtual void ShowMessage(std::string_view message) = 0;
  /// A modal message box with OK and Cancel; Escape is Cancel. True for OK.
  virtual bool Confirm(std::string_view message) = 0;
};

inline constexpr const char* kLinkError = "MCU link error";

/// Appends `message` and a line end, and refreshes.
void AppendLine(RtdView& view, std::string_view message);
/// The same in red.
void AppendRedLine(RtdView& view, std::string_view message);
/// Appends `kLinkError` in red, without a line end, and refreshes.
void AppendLinkError(RtdView& view);
/// The same with a line end.
void AppendLinkErrorLine(RtdView& view);

}  // namespace tongxun2120
