// The window from which the operator writes or erases an RTD2120.
#pragma once

#include <QMainWindow>
#include <QPlainTextEdit>
#include <array>
#include <filesystem>
#include <functional>

#include "image/code_buffers.h"
#include "image/rtd_load.h"
#include "rtd2120/rtd_view.h"
#include "rtd2120/rtd_writer.h"
#include "ui/controls.h"
#include "ui/print_surface.h"

/// Holds controls only; what survives closing and reopening belongs to `RtdWriter` and to the code
/// buffers. Opening it sets both modes to what its options show.
class RTD2120Write final : public QMainWindow, private RtdView, private RtdLoadView {
 public:
  /// `settingsAsked`: the "About" entry was chosen. `closed`: the window is closing, by any means.
  RTD2120Write(RtdWriter& writer, tongxun::CodeBuffers& buffers,
               std::filesystem::path programFolder, std::function<void()> settingsAsked,
               std::function<void()> closed);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void CreateMenu();
  void CreateBankRows();
  void CreateStatus();
  void CreateBankOptions();
  void CreateOperationOptions();

  // RtdView
  std::string StatusText() const override { return statusText_; }
  void SetStatusText(const std::string& text) override;
  void SetStatusRed(bool red) override;
  void RefreshStatus() override;
  void ShowMessage(std::string_view message) override;

  // RtdLoadView
  std::string ChooseFile(std::string_view filters) override;
  void Beep() override;
  void ShowMessage(std::string_view message, std::string_view detail) override;
  void PrintLine(std::string_view line) override;
  void ShowBankRow(int bank, const RtdBankRow& row) override;

  struct BankBoxes {
    QLineEdit* file;
    QLineEdit* maximumAddress;
    QLineEdit* checksum;
  };

  RtdWriter& writer_;
  tongxun::CodeBuffers& buffers_;
  const std::filesystem::path programFolder_;
  const std::function<void()> settingsAsked_;
  const std::function<void()> closed_;

  PrintSurface* surface_;  // the client area
  std::array<BankBoxes, 2> banks_{};
  QPlainTextEdit* writeStatus_ = nullptr;
  std::string statusText_;  // with its CR LF line ends, which the box does not keep
};
