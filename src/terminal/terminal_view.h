// The one view of all loads and operations on a terminal: it narrates, and answers questions with
// what stands on the command line.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <string_view>

#include "rtd2120/rtd_view.h"
#include "terminal/narrator.h"
#include "vsk/isp_view.h"

namespace terminal {

inline constexpr const char* kWrongStartCode =
    "error!!! a record of the file does not begin with \":\"";

/// `View`: what the chip family needs of its window.
template <typename View>
class TerminalView : public View {
 public:
  explicit TerminalView(Narrator& narrator) : narrator_(narrator) {}

  void Beep() override {}
  /// What is refused, and why: the load's facts and the result tell it.
  void ShowMessage(std::string_view, std::string_view) override {}
  /// A file that has changed since it was loaded, a moment ago, is somebody else's at work.
  bool Confirm(std::string_view /*question*/) override { return false; }
  void ShowNotes(std::string_view text) override { narrator_.Say(text); }
  void PrintLine(std::string_view) override { narrator_.Say(kWrongStartCode); }
  void ClearPrintedLines() override {}
  void Programmed(int percent) override { narrator_.Percent(percent); }

 protected:
  Narrator& narrator_;
};

class VskTerminalView final : public TerminalView<IspView> {
 public:
  using TerminalView::TerminalView;

  std::deque<std::string> answers;   // to input boxes
  std::function<void()> quitAction;  // of the option "quit isp mode"

  /// The option "go to isp mode" is the operator's choice now.
  void EnterOptionSelected() { quitSelected_ = false; }

  void SetStatusColour(StatusLabel, StatusColour) override {}
  void SetStatusText(StatusLabel, std::string_view text) override {
    if (!text.starts_with("finish")) narrator_.Step(text);  // the bar says it
  }
  void RepaintStatus(StatusLabel) override {}
  void ShowData(std::string_view) override {}
  void ShowInBox(ImageBox, std::string_view) override {}
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

  void ShowBankRow(tongxun2120::Bank, const std::string&, const loadfile::ImageFacts&) override {}
  /// Narrates the lines that are complete, each once.
  void SetStatusText(const std::string& text, const std::string&) override {
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
