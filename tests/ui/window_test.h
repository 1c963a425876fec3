// What the window tests share: the whole tool with its real windows, found by their names.
#pragma once

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>
#include <qpa/qwindowsysteminterface.h>

#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>
#include <memory>
#include <optional>

#include "session/by_name.h"
#include "support/board_rig.h"
#include "support/run_window_test.h"
#include "support/temp_folder.h"
#include "tool/tool.h"
#include "ui/launcher.h"
#include "widgets/application_style.h"

/// A window by its name; what reaches into it needs it to be open.
struct NamedWindow {
  const char* name;

  /// Null when the window is not open.
  QWidget* Shown() const { return ShownWindow(name); }
  template <typename Control = QWidget>
  Control* Find(const char* control) const {
    return ByName<Control>(name, control);
  }
  QString Text(const char* control) const { return ShownText(name, control); }
  bool IsOn(const char* option) const { return Find<QAbstractButton>(option)->isChecked(); }
  void Press(const char* button) const {
    QTest::mouseClick(Find<QAbstractButton>(button), Qt::LeftButton, {}, QPoint(8, 8));
  }
  void Choose(const char* menuEntry) const { Find<QAction>(menuEntry)->trigger(); }
  void Activate() const {
    Shown()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(Shown()));
  }
};

constexpr NamedWindow kLauncher{"Main"};
constexpr NamedWindow kVskWriter{"Form1"};
constexpr NamedWindow kSettings{"Form2"};
constexpr NamedWindow kSecurity{"Form3"};
constexpr NamedWindow kRtdWriter{"RTD2120Write"};

/// A program on the simulated board, in a program folder of its own.
struct Desk {
  TempFolder folder;
  FakeTicks ticks{2000};
  simulator::SimulatedBoard board{Wiring()};
  simulator::FrameLog log;
  Tool tool{board.cable, ticks, {folder / "program", folder / "config"}, {}};
  std::unique_ptr<Main> launcher;

  Desk() {
    board.wire.ListenTo(&log);
    const auto initial = std::filesystem::path(SOURCE_FOLDER) / "src/simulator/Initial";
    std::filesystem::create_directories(folder / "program");
    std::filesystem::create_directories(folder / "config");
    std::filesystem::copy(initial, folder / "program/Initial");
  }
};

/// A test that begins with a program of its own.
class WindowTest : public QObject {
 protected:
  std::optional<Desk> desk_;

  void Start() {
    ApplyApplicationStyle();
    desk_->launcher = std::make_unique<Main>(desk_->tool);
    desk_->launcher->show();
  }
  /// Starts a new program, and opens a writer with the launcher's button.
  void StartWriter(const char* button, simulator::ConnectedChip chip) {
    desk_.emplace();
    desk_->board.Connect(chip);
    Start();
    kLauncher.Press(button);
  }
};

/// Keys as the window system sends them.
inline void SendKey(QWidget* window, QEvent::Type type, Qt::Key key,
                    Qt::KeyboardModifiers modifiers = {}, bool repeats = false) {
  const auto now = static_cast<ulong>(QTest::lastMouseTimestamp);
  QWindowSystemInterface::handleKeyEvent(window->windowHandle(), now, type, key, modifiers,
                                         QString(), repeats);
  QApplication::processEvents();
}
inline void PressKey(QWidget* window, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
  QTest::lastMouseTimestamp += 900;
  SendKey(window, QEvent::KeyPress, key, modifiers);
}
/// A key that is held, once; `told`: that it repeats, which X11 leaves open.
inline void RepeatKey(QWidget* window, Qt::Key key, Qt::KeyboardModifiers modifiers, bool told) {
  QTest::lastMouseTimestamp += 40;
  SendKey(window, QEvent::KeyRelease, key, modifiers, told);
  SendKey(window, QEvent::KeyPress, key, modifiers, told);
}

/// As a screen reader does: a call, no event.
inline void PressAsReader(QWidget* control) {
  auto* actions = QAccessible::queryAccessibleInterface(control)->actionInterface();
  actions->doAction(actions->actionNames().value(0));
}

/// As if the time of the control's timers had come: a press by a screen reader takes one.
inline void EndTimers(QWidget* control) {
  for (const auto& timer : QAbstractEventDispatcher::instance()->registeredTimers(control)) {
    QTimerEvent ended(timer.timerId);
    QApplication::sendEvent(control, &ended);
  }
}

/// What a screen reader is told of the control.
inline QString Told(QWidget* control, QAccessible::Text what) {
  return QAccessible::queryAccessibleInterface(control)->text(what);
}

/// Listens as a screen reader does: what it speaks by itself, "name (description)".
class ScreenReader {
 public:
  ScreenReader() {
    Platform()->setActive(true);
    before_ = QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
      auto* control = qobject_cast<QWidget*>(event->object());
      const auto* told = event->accessibleInterface();
      if (event->type() != QAccessible::ObjectShow || told == nullptr) return;
      if (told->role() != QAccessible::Notification) return;
      spoken_ << Told(control, QAccessible::Name) + " (" + Told(control, QAccessible::Description) +
                     ")";
    });
  }
  ~ScreenReader() {
    QAccessible::installUpdateHandler(before_);
    Platform()->setActive(false);
  }
  ScreenReader(const ScreenReader&) = delete;
  ScreenReader& operator=(const ScreenReader&) = delete;

  /// What was spoken since it was asked last, joined by "; ".
  QString Spoken() {
    QApplication::processEvents();
    return std::exchange(spoken_, {}).join(QStringLiteral("; "));
  }

 private:
  static QPlatformAccessibility* Platform() {
    return QGuiApplicationPrivate::platformIntegration()->accessibility();
  }

  QAccessible::UpdateHandler before_;
  static inline QStringList spoken_;
};

/// Confirms the next message box; its text and its detail go to `said`, with "|" between.
inline void ConfirmMessage(QString& said) {
  AnswerDialog<QMessageBox>([&said](QMessageBox& box) {
    said = box.text() + QLatin1Char('|') + box.informativeText();
    QTest::keyClick(&box, Qt::Key_Enter);
  });
}

inline void ChooseFile(const QString& file) {
  AnswerDialog<QFileDialog>([file](QFileDialog& dialog) { Choose(dialog, file); });
}
