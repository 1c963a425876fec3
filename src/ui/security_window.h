// The Security Check window: asks for the ISP entry parameters when there are none.
#pragma once

#include <QWidget>
#include <array>
#include <filesystem>

#include "widgets/controls.h"

class Form3 final : public QWidget {
 public:
  /// `parameterFile`: "Initial/security.cod", which takes effect at the program's next start.
  explicit Form3(std::filesystem::path parameterFile);

 private:
  void Connect();
  void Command1_Click();  // Check
  void Command2_Click();  // Exit

  const std::filesystem::path parameterFile_;
  QPushButton* checkButton_ = nullptr;
  QPushButton* exitButton_ = nullptr;
  std::array<QLineEdit*, 6> boxes_{};  // address, count, codes 1..4
};
