// An RTD2120 writer window that keeps what it was asked to show.
#pragma once

#include <string>
#include <vector>

#include "rtd2120/rtd_load.h"
#include "rtd2120/rtd_view.h"

class RtdTranscript final : public RtdView, public RtdLoadView {
 public:
  std::string text;  // the status box, with its CR LF
  bool red = false;
  std::string file;                 // the answer to the file dialog
  std::vector<std::string> events;  // messages, rows, and each refresh with what it showed

  std::string StatusText() const override { return text; }
  void SetStatusText(const std::string& shown) override { text = shown; }
  void SetStatusRed(bool isRed) override { red = isRed; }
  void RefreshStatus() override { events.push_back((red ? "red " : "") + LastLine()); }
  void ShowMessage(std::string_view message) override { Say("message " + std::string(message)); }

  std::string ChooseFile(std::string_view filters) override {
    Say("choose " + std::string(filters));
    return file;
  }
  void Beep() override { Say("beep"); }
  void ShowMessage(std::string_view message, std::string_view) override { ShowMessage(message); }
  void PrintLine(std::string_view line) override { Say("print " + std::string(line)); }
  void ShowBankRow(int bank, const RtdBankRow& row) override {
    Say("row " + std::to_string(bank) + " " + row.maximumAddress + " " + row.checksum + " " +
        row.file);
  }

 private:
  void Say(const std::string& event) { events.push_back(event); }
  /// The line that was written last, with its line end if it has one.
  std::string LastLine() const {
    const std::size_t end = text.ends_with("\r\n") ? text.size() - 2 : text.size();
    const std::size_t before = text.rfind('\n', end == 0 ? 0 : end - 1);
    return text.substr(before == std::string::npos ? 0 : before + 1);
  }
};
