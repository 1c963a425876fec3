// What the operations and load commands show in and ask of the VSK writer window.
#include "ui/vsk_writer_window.h"

QLabel* Form1::StatusControl(StatusLabel label) const {
  return label == StatusLabel::IspMode ? label2_ : label3_;
}

void Form1::SetStatusColour(StatusLabel label, StatusColour colour) {
  QPalette palette = StatusControl(label)->palette();
  palette.setColor(QPalette::WindowText,
                   colour == StatusColour::Red ? QColor(255, 0, 0) : QColor(0, 0, 0));
  StatusControl(label)->setPalette(palette);
}

void Form1::SetStatusText(StatusLabel label, std::string_view text) {
  StatusControl(label)->setText(TextOf(text));
}

void Form1::RepaintStatus(StatusLabel label) { StatusControl(label)->repaint(); }

void Form1::ShowData(std::string_view text) { text1_->setPlainText(TextOf(text)); }

void Form1::ShowHardwareCrc(std::string_view text) { text6_->setText(TextOf(text)); }

void Form1::SelectQuitOption() { option5_->setChecked(true); }

void Form1::DeselectQuitOption() {
  option5_->setAutoExclusive(false);  // the group must be able to have no selection
  option5_->setChecked(false);
  option5_->setAutoExclusive(true);
}

bool Form1::PageReadSelected() const { return option9_->isChecked(); }

std::string Form1::AskText(std::string_view prompt, std::string_view title,
                           std::string_view answer) {
  return ShowInputBox(this, prompt, title, answer);
}

void Form1::ShowMessage(std::string_view message) { ShowMessageBox(this, message); }

bool Form1::Confirm(std::string_view message) { return ShowQuestionBox(this, message); }

void Form1::ShowFileName(std::string_view text) { text2_->setText(TextOf(text)); }

void Form1::ShowMaximumAddress(std::string_view text) { text4_->setText(TextOf(text)); }

void Form1::ShowChecksum(std::string_view text) { text3_->setText(TextOf(text)); }

void Form1::ShowSoftwareCrc(std::string_view text) { text5_->setText(TextOf(text)); }
