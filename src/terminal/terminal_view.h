// The one view of all loads and operations on a terminal: it narrates, keeps what a load describes,
// and answers questions with what stands on the command line.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "rtd2120/rtd_view.h"
#include "terminal/narrator.h"
#include "vsk/isp_view.h"

namespace terminal {

/// `View`: what the chip family needs of its window.
template <typename View>
class TerminalView : public View {
 public:
  explicit TerminalView(Narrator& narrator) : narrator_(narrator) {}

  std::string refusal;  // why a file was not taken; empty for none
  std::string notes;    // of files that are not as their maker meant; empty for none

  void Beep() override {}
  void ShowMessage(std::string_view message, std::string_view detail) override {
    refusal = std::string(message) + (detail.empty() ? "" : "\n") + std::string(detail);
  }
  /// A file that has changed since it was loaded, a moment ago, is somebody else's at work.
  bool Confirm(std::string_view /*question*/) override {
    refusal = "the file has changed since it was loaded: start again when it is at rest";
    return false;
  }
  void ShowNotes(std::string_view text) override { Note(text); }
  void PrintLine(std::string_view line) override {
    Note(std::string(line) + " a record of the file does not begin with \":\"");
  }
  void ClearPrintedLines() override {}
  void Programmed(int percent) override { narrator_.Percent(percent); }

 protected:
  void Note(std::string_view text) {
    notes += (notes.empty() ? "" : "\n") + std::string(text);
    narrator_.Say(text);
  }

  Narrator& narrator_;
};

/// What a load shows of one image.
struct ImageFacts {
  std::string maximumAddress = {};
  std::string checksum = {};
  std::string crc = {};
};

class VskTerminalView final : public TerminalView<IspView> {
 public:
  using TerminalView::TerminalView;

  std::map<ImageBox, std::string> boxes;
  std::deque<std::string> answers;   // to input boxes
  std::string modeStatus;            // shown last
  std::function<void()> quitAction;  // of the option "quit isp mode"

  /// The option "go to isp mode" is the operator's choice now.
  void EnterOptionSelected() { quitSelected_ = false; }

  void SetStatusColour(StatusLabel, StatusColour) override {}
  void SetStatusText(StatusLabel label, std::string_view text) override {
    if (label == StatusLabel::IspMode && !text.empty()) modeStatus = text;
    if (!text.starts_with("finish")) narrator_.Step(text);  // the bar says it
  }
  void RepaintStatus(StatusLabel) override {}
  void ShowData(std::string_view) override {}
  void ShowInBox(ImageBox box, std::string_view text) override { boxes[box] = text; }
  /// As in the window: selected by program, the option runs its action when it was not yet.
  void SelectQuitOption() override {
    if (!std::exchange(quitSelected_, true)) quitAction();
  }
  void DeselectQuitOption() override { quitSelected_ = false; }
  std::string AskText(std::string_view, std::string_view, std::string_view) override {
    if (answers.empty()) return {};
    std::string answer = answers.front();
    answers.pop_front();
    return answer;
  }

 private:
  bool quitSelected_ = false;
};

class RtdTerminalView final : public TerminalView<tongxun2120::RtdView> {
 public:
  using TerminalView::TerminalView;

  std::vector<ImageFacts> banks;  // in the order of their loads

  void ShowBankRow(tongxun2120::Bank, const tongxun2120::RtdBankRow& row) override {
    banks.push_back({row.maximumAddress, row.checksum, ""});
  }
  /// Narrates the lines that are complete, each once.
  void SetStatusText(const std::string& text) override {
    narrated_ = std::min(narrated_, text.size());
    for (std::size_t end = 0; (end = text.find("\r\n", narrated_)) != std::string::npos;) {
      narrator_.Step(text.substr(narrated_, end - narrated_));
      narrated_ = end + 2;
    }
  }
  void SetStatusRed(bool) override {}
  void RefreshStatus() override {}

 private:
  std::size_t narrated_ = 0;  // characters of the status text
};

}  // namespace terminal
