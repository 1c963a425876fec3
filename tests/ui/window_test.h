// What the window tests share: the whole tool with its real windows, found by their names.
#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>
#include <memory>
#include <optional>

#include "support/board_bench.h"
#include "support/temp_folder.h"
#include "text/hex_text.h"
#include "tool/tool.h"
#include "ui/launcher.h"
#include "widgets/by_name.h"
#include "widgets/controls.h"

/// What passes on the bus; `hook` runs once, at the next START, while an operation holds the
/// thread.
class HookedLog final : public simulator::BusListener {
 public:
  simulator::FrameLog log;
  std::function<void()> hook;

  void Started(bool repeated) override {
    if (hook) std::exchange(hook, nullptr)();
    log.Started(repeated);
  }
  void Byte(std::uint8_t value, bool fromTarget, bool acknowledged) override {
    log.Byte(value, fromTarget, acknowledged);
  }
  void Stopped() override { log.Stopped(); }
};

/// A started program on the simulated board, in a program folder of its own.
struct Desk {
  TempFolder folder;
  FakeTicks ticks{2000};
  simulator::SimulatedBoard board{Wiring()};
  HookedLog bus;
  simulator::FrameLog& log = bus.log;
  Tool tool{board.cable, ticks, {folder / "program", folder / "config"}, {}};
  std::unique_ptr<Main> launcher;

  Desk() {
    board.Connect(simulator::ConnectedChip::Vsk830);
    board.wire.ListenTo(&bus);
    const auto initial = std::filesystem::path(SOURCE_FOLDER) / "src/simulator/Initial";
    std::filesystem::create_directories(folder / "program");
    std::filesystem::create_directories(folder / "config");
    std::filesystem::copy(initial, folder / "program/Initial");
  }

  void Start() {
    launcher = std::make_unique<Main>(tool);
    launcher->show();
  }

  static void Press(const char* window, const char* name) {
    QTest::mouseClick(ByName<QAbstractButton>(window, name), Qt::LeftButton, {}, QPoint(8, 8));
  }
  static void Activate(const char* window) {
    ShownWindow(window)->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(ShownWindow(window)));
  }
};

/// What a screen reader is told of the control.
inline QString Told(QWidget* control, QAccessible::Text what) {
  return QAccessible::queryAccessibleInterface(control)->text(what);
}

/// Confirms the next message box; its texts go to `text` and `detail`.
inline void ConfirmMessage(QString& text, QString* detail = nullptr) {
  AnswerDialog<QMessageBox>([&text, detail](QMessageBox& box) {
    text = box.text();
    if (detail != nullptr) *detail = box.informativeText();
    QTest::keyClick(&box, Qt::Key_Enter);
  });
}

inline void AnswerInput(const QString& answer) {
  AnswerDialog<QInputDialog>([answer](QInputDialog& box) {
    box.setTextValue(answer);
    box.accept();
  });
}

inline void ChooseFile(const QString& file) {
  AnswerDialog<QFileDialog>([file](QFileDialog& dialog) { Choose(dialog, file); });
}
