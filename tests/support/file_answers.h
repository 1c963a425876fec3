// What loads and runs say and ask of a window, kept as words; answers are set in advance.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "image/writer_view.h"

/// `View`: a `WriterView`.
template <typename View = WriterView>
class FileAnswers : public View {
 public:
  bool confirmed = true;                     // the answer to OK or Cancel
  std::string lastDetail;                    // of the last message
  std::function<void()> whileAsked = [] {};  // what a screen reader does behind the question
  std::string notes;                         // of the last file that had any

  std::vector<std::string> Take() { return std::exchange(said_, {}); }

  void Beep() override { Say("beep"); }
  void ShowMessage(std::string_view message, std::string_view detail) override {
    Say("message " + std::string(message));
    lastDetail = detail;
  }
  bool Confirm(std::string_view question) override {
    Say("confirm " + std::string(question));
    whileAsked();
    return confirmed;
  }
  void ShowNotes(std::string_view text) override { notes = text; }
  void PrintLine(std::string_view line) override { Say("print " + std::string(line)); }
  void ClearPrintedLines() override { Say("clear"); }

 protected:
  void Say(const std::string& line) { said_.push_back(line); }

  std::vector<std::string> said_;
};
