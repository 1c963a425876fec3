// What the operations and load commands show in and ask of the VSK writer window.
#include "ui/vsk_writer_window.h"

SpokenLabel* Form1::StatusControl(StatusLabel label) const {
  return label == StatusLabel::IspMode ? ispModeStatus_ : operationStatus_;
}

void Form1::SetStatusColour(StatusLabel label, StatusColour colour) {
  const QString description = label == StatusLabel::IspMode ? QStringLiteral("Isp Mode Status")
                                                            : QStringLiteral("Isp Operate Status");
  ShowLiveColour(StatusControl(label), description, colour == StatusColour::Red);
}

void Form1::SetStatusText(StatusLabel label, std::string_view text) {
  StatusControl(label)->ShowText(TextOf(text));
}

void Form1::RepaintStatus(StatusLabel label) { StatusControl(label)->repaint(); }

void Form1::ShowData(std::string_view text) {
  constexpr std::string_view kLineEnd = "\r\n";
  if (text.ends_with(kLineEnd)) text.remove_suffix(kLineEnd.size());  // it would be an empty line
  dataDisplay_->setPlainText(TextOf(text));
}

void Form1::ShowInBox(ImageBox box, std::string_view text) {
  const auto show = box == ImageBox::FileName ? ShowLiveTextEnd : ShowLiveText;
  show(imageBoxes_[static_cast<std::size_t>(box)], TextOf(text));
}

void Form1::SelectQuitOption() { quitOption_->setChecked(true); }

void Form1::DeselectQuitOption() {
  quitOption_->setAutoExclusive(false);  // the group must be able to have no selection
  quitOption_->setChecked(false);
  quitOption_->setAutoExclusive(true);
}

std::string Form1::AskText(std::string_view prompt, std::string_view title,
                           std::string_view answer) {
  return ShowInputBox(this, prompt, title, answer);
}
