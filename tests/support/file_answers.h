// What load commands ask of a window, kept as words; the file dialog's answer is set in advance.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// `LoadView`: a `FileView`.
template <typename LoadView>
class FileAnswers : public LoadView {
 public:
  std::string file;        // the answer to the file dialog
  std::string lastDetail;  // of the last message
  std::string notes;       // of the last file that had any

  std::vector<std::string> Take() { return std::exchange(said_, {}); }

  std::string ChooseFile(std::string_view filters) override {
    Say("choose " + std::string(filters));
    return file;
  }
  void Beep() override { Say("beep"); }
  void ShowMessage(std::string_view message, std::string_view detail) override {
    Say("message " + std::string(message));
    lastDetail = detail;
  }
  void ShowNotes(std::string_view text) override { notes = text; }
  void PrintLine(std::string_view line) override { Say("print " + std::string(line)); }
  void ClearPrintedLines() override { Say("clear"); }

 protected:
  void Say(const std::string& line) { said_.push_back(line); }

  std::vector<std::string> said_;
};
