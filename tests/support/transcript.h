// A writer window that keeps a transcript of everything it is asked to show, a status text with the
// colour that its label has by then, and answers from lists.
#pragma once

#include <deque>
#include <functional>
#include <string>

#include "support/file_answers.h"
#include "vsk/isp_view.h"

class Transcript : public FileAnswers<IspView> {
 public:
  std::deque<std::string> answers;  // to input boxes; cancelled when used up
  bool quitSelected = false;        // "quit isp mode" is the selected option
  /// Run when the program selects "quit isp mode" and it was not selected before.
  std::function<void()> quitAction;

  /// What the labels hold now.
  std::string modeText, operationText;
  StatusColour modeColour = StatusColour::Black, operationColour = StatusColour::Black;
  std::string data;  // the data display

  void ShowData(std::string_view text) override {
    data = text;
    Say("data " + data.substr(0, data.find('\r')));
  }
  void SetStatusColour(StatusLabel label, StatusColour colour) override {
    (label == StatusLabel::IspMode ? modeColour : operationColour) = colour;
  }
  void SetStatusText(StatusLabel label, std::string_view text) override {
    const bool mode = label == StatusLabel::IspMode;
    (mode ? modeText : operationText) = text;
    const bool red = (mode ? modeColour : operationColour) == StatusColour::Red;
    Say(Name(label) + (red ? " red: " : ": ") + std::string(text));
  }
  void RepaintStatus(StatusLabel label) override { Say(Name(label) + " repaint"); }
  void ShowInBox(ImageBox box, std::string_view text) override {
    constexpr std::array kNames{"Text2 ", "Text4 ", "Text3 ", "Text5 ", "Text6 "};
    Say(kNames[static_cast<std::size_t>(box)] + std::string(text));
  }
  void SelectQuitOption() override {
    Say("select Option5");
    if (!std::exchange(quitSelected, true) && quitAction) quitAction();
  }
  void DeselectQuitOption() override {
    Say("deselect Option5");
    quitSelected = false;
  }
  std::string AskText(std::string_view prompt, std::string_view title,
                      std::string_view answer) override {
    Say("ask " + std::string(prompt) + "|" + std::string(title) + "|" + std::string(answer));
    if (answers.empty()) return {};
    std::string next = answers.front();
    answers.pop_front();
    return next;
  }

 private:
  static std::string Name(StatusLabel label) {
    return label == StatusLabel::IspMode ? "Label2" : "Label3";
  }
};
