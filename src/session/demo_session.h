// The operator's session, played in the real windows: press, choose, read what the windows show,
// and compare the chip's flash with the image in the end.
#pragma once

#include <QString>
#include <QWidget>

#include "simulator/simulated_board.h"
#include "simulator_window/board_window.h"

class DemoSession {
 public:
  /// `folder`: where the screenshots go. `samples`: where the sample images stand.
  DemoSession(simulator::SimulatedBoard& board, QWidget& launcher,
              simulator::BoardWindow& boardWindow, const QString& folder, const QString& samples);

  /// True when every step showed what it has to show.
  bool Play();

 private:
  void EnterSecurityCodes();
  void LookAtSettings();
  void ProgramVsk830();
  void ProgramVsk630();
  void RunToWriteOk();
  void WriteRtd2120();

  QString Sample(const char* file) const;
  /// Plugs a chip in, with the "Simulated board" window's own control.
  void Plug(const QString& chip);
  void Press(const char* window, const char* control);
  void RefuseDialog();
  /// Types into a box of a window.
  void Type(QWidget& window, const char* control, const char* text);
  /// Presses a button that opens the file dialog, and answers it: `box` shows the file.
  void LoadFile(const char* window, const char* button, const char* box, const QString& file);
  void Expect(const char* window, const char* control, const QString& text);
  void ExpectFlash(const simulator::Flash& flash, const QString& hexFile);
  void Picture(QWidget* window, const char* name);
  void Check(bool holds, const QString& what);

  simulator::SimulatedBoard& board_;
  QWidget& launcher_;
  simulator::BoardWindow& boardWindow_;
  const QString folder_;
  const QString samples_;
  int pictures_ = 0;
  bool allHeld_ = true;
};
