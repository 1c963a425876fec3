// The lines of one run, as the status box shows them, and their colour: black, and red from the
// first error on.
#pragma once

#include <string>
#include <string_view>

#include "rtd2120/rtd_view.h"
#include "run_log/run_result.h"

namespace tongxun2120 {

inline constexpr const char* kLinkError = "MCU link error";

class RtdLog {
 public:
  /// A run begins: the box is emptied, and black.
  explicit RtdLog(RtdView& view);

  /// All lines, ended by CR LF; the last one may not be ended.
  const std::string& Text() const { return text_; }

  /// Each shows its text at once. `Show` replaces all lines.
  void Show(const std::string& text);
  void AppendLine(std::string_view message);
  /// The command that the next line rests upon was not acknowledged: in the result only.
  void NoteSilence() { silent_ = true; }
  /// A bank is programmed so far.
  void Programmed(int percent) { view_.Programmed(percent); }
  void AppendRedLine(std::string_view message);
  /// "MCU link error" in red, without a line end. `place`: where programming stopped.
  void AppendLinkError(std::string_view place = {});

  /// The lines in one, joined by "; ", and the first error.
  RunResult Result() const;

 private:
  void AppendRed(std::string_view message, const char* lineEnd);
  std::string LastLine() const;

  RtdView& view_;
  std::string text_;
  std::string errors_;   // all of them, each followed by "; "
  std::string failure_;  // the first
  std::string place_;    // of the first
  bool silent_ = false;
};

}  // namespace tongxun2120
