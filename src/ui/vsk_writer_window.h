// The window from which the operator programs a VSK830 or VSK630.
#pragma once

#include <QPlainTextEdit>
#include <array>
#include <functional>

#include "ui/writer_window.h"
#include "vsk/isp_operations.h"
#include "vsk/isp_view.h"
#include "vsk/vsk_load.h"
#include "vsk/vsk_writer.h"
#include "widgets/controls.h"

/// Holds controls only; what survives closing and reopening belongs to `VskWriter`.
class Form1 final : public WriterWindow<IspView> {
 public:
  /// `settingsAsked`: the "About" entry was chosen. `closed`: the window is closing, by any means.
  Form1(VskWriter& writer, IspOperations& isp, FilePlaces& places,
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
  void Connect();
  LoadCommand LoadCommandAt(QPoint place) override;
  void Load(const std::string& file);
  void RunFromMenu(RunChoice choice);
  SpokenLabel* StatusControl(StatusLabel label) const;

  void Command1_Click();  // Load File
  void Command4_Click();  // Run
  void Option4_Click();   // go to isp mode
  void Option5_Click();   // quit isp mode
  void Lnf_Click();       // Load Normal File
  void Exit_Click();
  void Blank_Entire_Click();
  void Program_Click();
  void about_Click();
  /// `step`: Page Down or Page Up.
  void Text1_KeyDown(RunChoice step);

  // IspView
  void ShowData(std::string_view text) override;
  void SetStatusColour(StatusLabel label, StatusColour colour) override;
  void SetStatusText(StatusLabel label, std::string_view text) override;
  void RepaintStatus(StatusLabel label) override;
  void ShowInBox(ImageBox box, std::string_view text) override;
  void SelectQuitOption() override;
  void DeselectQuitOption() override;
  std::string AskText(std::string_view prompt, std::string_view title,
                      std::string_view answer) override;

  VskWriter& writer_;
  IspOperations& isp_;
  const std::function<void()> settingsAsked_;

  QAction* loadCompressed_ = nullptr;
  QAction* loadNormal_ = nullptr;
  QAction* exit_ = nullptr;
  QAction* eraseAll_ = nullptr;
  QAction* program_ = nullptr;
  QAction* about_ = nullptr;
  QPushButton* loadButton_ = nullptr;
  QPushButton* runButton_ = nullptr;
  std::array<OptionButton*, kVskModels.size()> chips_{};  // by `VskChip`
  std::array<OptionButton*, 5> operations_{};
  OptionButton* pageReadOption_ = nullptr;  // among them
  OptionButton* enterOption_ = nullptr;
  OptionButton* quitOption_ = nullptr;
  QPlainTextEdit* dataDisplay_ = nullptr;
  std::array<QLineEdit*, 5> imageBoxes_{};  // by `ImageBox`
  SpokenLabel* ispModeStatus_ = nullptr;
  SpokenLabel* operationStatus_ = nullptr;
};
