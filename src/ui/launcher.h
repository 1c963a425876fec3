// The first window. Starts the program up, opens the writers one at a time, ends the program.
#pragma once

#include <QWidget>
#include <array>
#include <memory>

#include "tool/tool.h"
#include "ui/rtd_writer_window.h"
#include "ui/security_window.h"
#include "ui/settings_window.h"
#include "ui/vsk_writer_window.h"

/// Which writer window is open.
enum class OpenWriter { Vsk = 0, Rtd2120 = 2, None = 3 };

/// Owns all other windows.
class Main final : public QWidget {
 public:
  /// Runs the whole start-up, which holds the thread for about a second; shows no launcher yet.
  explicit Main(Tool& tool);
  ~Main() override;

  OpenWriter WriterState = OpenWriter::None;

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void CreateButtons();
  void Connect();
  void Form_Load();
  void Command3_Click();  // RTD2120
  void Command4_Click();  // EXIT
  void Form_Unload();
  void Init830And630();
  void InitRTD2120();
  void check_file();
  void CreateForm1();
  void OpenVskWriter(VskChip chip);
  void ShowSettings();
  void ShowManualPage();

  Tool& tool_;
  FilePlaces places_;

  std::array<QPushButton*, kVskModels.size()> vskButtons_{};
  QPushButton* rtdButton_ = nullptr;
  QPushButton* exitButton_ = nullptr;
  std::unique_ptr<Form1> form1_;
  bool showsCalibration_ = true;  // the next VSK writer, when it opens
  std::unique_ptr<Form2> form2_;
  std::unique_ptr<RTD2120Write> rtdWrite_;
  std::unique_ptr<Form3> form3_;
};
