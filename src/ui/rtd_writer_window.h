// The window from which the operator writes or erases an RTD2120.
#pragma once

#include <QPlainTextEdit>
#include <array>
#include <functional>

#include "rtd2120/rtd_view.h"
#include "rtd2120/rtd_writer.h"
#include "ui/writer_window.h"
#include "widgets/controls.h"

/// Holds controls only; what survives closing and reopening belongs to `RtdWriter` and to the code
/// buffers. Opening it sets both modes to what its options show.
class RTD2120Write final : public WriterWindow<tongxun2120::RtdView> {
 public:
  /// `settingsAsked`: the "About" entry was chosen. `closed`: the window is closing, by any means.
  RTD2120Write(tongxun2120::RtdWriter& writer, FilePlaces& places,
               std::function<void()> settingsAsked, std::function<void()> closed);

 private:
  void CreateMenu();
  void CreateBankRows();
  void CreateStatus();
  void CreateBankOptions();
  void CreateOperationOptions();
  void Connect();
  LoadCommand LoadCommandAt(QPoint place) override;
  void ChooseAndLoad(tongxun2120::Bank bank);
  void Load(const std::string& file, tongxun2120::Bank bank);

  void Form_Load();
  void MainBank_Click();
  void SecondBank_Click();
  void BothBank_Click();
  void AutoOp_Click();
  void EraseOp_Click();
  void Com64K_Click();
  void Com64_96K_Click();
  void Run_Click();
  void About_Click();
  void exit_Click();

  // RtdView
  void SetStatusText(const std::string& text, const std::string& spoken) override;
  void SetStatusRed(bool red) override;
  void RefreshStatus() override;
  void ShowBankRow(tongxun2120::Bank bank, const std::string& file,
                   const loadfile::ImageFacts& facts) override;

  struct BankBoxes {
    QLineEdit* file;
    QLineEdit* maximumAddress;
    QLineEdit* checksum;
    QPushButton* load;
  };

  tongxun2120::RtdWriter& writer_;
  const std::function<void()> settingsAsked_;

  std::array<BankBoxes, 2> banks_{};
  QAction* about_ = nullptr;
  QAction* exit_ = nullptr;
  OptionButton* firstBankOption_ = nullptr;
  OptionButton* secondBankOption_ = nullptr;
  OptionButton* bothBanksOption_ = nullptr;
  OptionButton* automaticOption_ = nullptr;
  OptionButton* eraseOption_ = nullptr;
  QPushButton* runButton_ = nullptr;
  QPlainTextEdit* writeStatus_ = nullptr;
  Announcer* announcer_ = nullptr;
};
