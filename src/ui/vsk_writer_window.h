// The window from which the operator programs a VSK830 or VSK630.
#pragma once

#include <QPlainTextEdit>
#include <array>
#include <filesystem>
#include <functional>

#include "ui/writer_window.h"
#include "vsk/isp_operations.h"
#include "vsk/isp_view.h"
#include "vsk/vsk_load.h"
#include "vsk/vsk_writer.h"
#include "widgets/controls.h"

/// Holds controls only; what survives closing and reopening belongs to `VskWriter`.
class Form1 final : public WriterWindow<VskLoadView>, private IspView {
 public:
  /// `settingsAsked`: the "About" entry was chosen. `closed`: the window is closing, by any means.
  Form1(VskWriter& writer, IspOperations& isp, std::filesystem::path programFolder,
        std::function<void()> settingsAsked, std::function<void()> closed);

  /// Shows a calibration count in the data display.
  void ShowCalibration(std::int32_t tickPollCount);
  /// Makes `chip` the one that is programmed, and enables the entry that loads a normal file.
  void SelectChip(VskChip chip);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void CreateMenus();
  void CreateFileMenu();
  void CreateActionMenu();
  void CreateOperationOptions(QWidget* client);
  void CreateChipOptions(QWidget* client);
  void CreateImageBoxes(QWidget* client);
  void CreateIspMode(QWidget* client);
  void LoadFile();
  void ExitChosen();
  QLabel* StatusControl(StatusLabel label) const;

  // IspView
  void ShowData(std::string_view text) override;
  void SetStatusColour(StatusLabel label, StatusColour colour) override;
  void SetStatusText(StatusLabel label, std::string_view text) override;
  void RepaintStatus(StatusLabel label) override;
  void ShowHardwareCrc(std::string_view text) override;  // also VskLoadView
  void SelectQuitOption() override;
  void DeselectQuitOption() override;
  bool PageReadSelected() const override;
  std::string AskText(std::string_view prompt, std::string_view title,
                      std::string_view answer) override;
  void ShowMessage(std::string_view message) override;
  bool Confirm(std::string_view message) override;

  // VskLoadView
  using WriterWindow::ShowMessage;  // with a detail
  void ShowFileName(std::string_view text) override;
  void ShowMaximumAddress(std::string_view text) override;
  void ShowChecksum(std::string_view text) override;
  void ShowSoftwareCrc(std::string_view text) override;

  VskWriter& writer_;
  IspOperations& isp_;
  const std::function<void()> settingsAsked_;

  std::array<OptionButton*, kVskModels.size()> chips_{};  // by `VskChip`
  OptionButton* option5_ = nullptr;                       // quit isp mode
  OptionButton* option9_ = nullptr;                       // Page Read
  QPlainTextEdit* text1_ = nullptr;                       // data display
  QLineEdit* text2_ = nullptr;                            // MCU File
  QLineEdit* text3_ = nullptr;                            // CheckSum
  QLineEdit* text4_ = nullptr;                            // MaxAddress
  QLineEdit* text5_ = nullptr;                            // S/W CRC
  QLineEdit* text6_ = nullptr;                            // H/W CRC
  QLabel* label2_ = nullptr;                              // ISP mode status
  QLabel* label3_ = nullptr;                              // operation status
};
