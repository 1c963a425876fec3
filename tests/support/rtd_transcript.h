// An RTD2120 writer window that keeps what it was asked to show.
#pragma once

#include <string>

#include "rtd2120/rtd_view.h"
#include "support/file_answers.h"

/// Keeps messages, rows, and each refresh with what it showed.
class RtdTranscript final : public FileAnswers<tongxun2120::RtdView> {
 public:
  std::string text;  // the status box, with its CR LF
  bool red = false;
  std::string spoken;  // last

  void SetStatusText(const std::string& shown, const std::string& said) override {
    text = shown;
    spoken = said;
  }
  void SetStatusRed(bool isRed) override { red = isRed; }
  void RefreshStatus() override { Say((red ? "red " : "") + LastLine()); }
  void ShowBankRow(tongxun2120::Bank bank, const std::string& file,
                   const loadfile::ImageFacts& facts) override {
    Say(std::string(bank == tongxun2120::Bank::First ? "row 1 " : "row 2 ") + facts.maximumAddress +
        " " + facts.checksum + " " + file);
  }

 private:
  /// The line that was written last, with its line end if it has one.
  std::string LastLine() const {
    const std::size_t end = text.ends_with("\r\n") ? text.size() - 2 : text.size();
    const std::size_t before = text.rfind('\n', end == 0 ? 0 : end - 1);
    return text.substr(before == std::string::npos ? 0 : before + 1);
  }
};
