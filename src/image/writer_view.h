// What loads and runs say and ask, whatever the chip. Free of any window toolkit.
#pragma once

#include <string_view>

class WriterView {
 public:
  virtual ~WriterView() = default;

  virtual void Beep() = 0;
  /// A message box with an OK button; `detail` stands beneath the message and may be empty.
  virtual void ShowMessage(std::string_view message, std::string_view detail = {}) = 0;
  /// A modal message box with OK and Cancel; Escape is Cancel. True for OK.
  virtual bool Confirm(std::string_view question) = 0;
  /// A message box that blocks nothing: what a file that was taken holds besides what its maker
  /// meant. Lines end with LF.
  virtual void ShowNotes(std::string_view notes) = 0;
  /// Prints a line on the window's own surface, below the ones printed before.
  virtual void PrintLine(std::string_view line) = 0;
  /// Takes back the lines that were printed for an earlier file.
  virtual void ClearPrintedLines() = 0;
  /// How much of a bank, or of all banks, is programmed: 0..100, at each page. The status texts of
  /// the operations say it too, in their own steps.
  virtual void Programmed(int /*percent*/) {}
};
