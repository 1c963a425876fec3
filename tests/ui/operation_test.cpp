// What the operator does in any window while an operation holds the thread.
#include <QAbstractEventDispatcher>

#include "ui/window_test.h"

namespace {

/// As the window system delivers it: at the event loop's next turn.
void Queue(const std::function<void()>& input) {
  QMetaObject::invokeMethod(qApp, input, Qt::QueuedConnection);
}

void SendMouse(QWidget* control, QEvent::Type type) {
  QWidget* top = control->window();
  const auto buttons = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
  qt_handleMouseEvent(top->windowHandle(), control->mapTo(top, QPoint(8, 8)),
                      control->mapToGlobal(QPoint(8, 8)), buttons, Qt::LeftButton, type, {},
                      QTest::lastMouseTimestamp += 900);
}

void QueueClick(QWidget* control) {
  for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    Queue([control, type] { SendMouse(control, type); });
  }
}

/// As a screen reader does: a call, no event.
void Press(QWidget* control) {
  QAccessible::queryAccessibleInterface(control)->actionInterface()->doAction(
      QAccessibleActionInterface::pressAction());
}

/// As if the time of the control's timers had come: a press by a screen reader takes one.
void EndTimers(QWidget* control) {
  for (const auto& timer : QAbstractEventDispatcher::instance()->registeredTimers(control)) {
    QTimerEvent ended(timer.timerId);
    QApplication::sendEvent(control, &ended);
  }
}

void QueueKey(QWidget* window, Qt::Key key, Qt::KeyboardModifiers modifiers) {
  Queue([=] { QTest::keyClick(window->windowHandle(), key, modifiers); });
}

}  // namespace

class OperationTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    desk_.emplace();
    desk_->board.Connect(simulator::ConnectedChip::Rtd2120);
    desk_->Start();
    Desk::Press("Main", "Command3");
    writer_ = ShownWindow("RTD2120Write");
    writer_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(writer_));
    Desk::Press("RTD2120Write", "EraseOp");
    Run();  // the runs that follow find the chip in ISP mode
    desk_->log.Clear();
    Run();
    oneRun_ = desk_->log.Lines().size();
    QVERIFY(oneRun_ > 0);
    desk_->log.Clear();
  }

  void inputIsDiscarded_data() {
    QTest::addColumn<std::function<void()>>("input");
    const auto row = [](const char* name, const std::function<void()>& input) {
      QTest::newRow(name) << input;
    };
    row("a second click on Run", [this] { QueueClick(Control("Run")); });
    row("a click on an option", [this] { QueueClick(Control("AutoOp")); });
    row("a click on the launcher", [] { QueueClick(ByName<QWidget>("Main", "Command1")); });
    row("the space bar on Run", [this] { QueueKey(writer_, Qt::Key_Space, {}); });
    row("a menu entry chosen by a screen reader",
        [] { Queue([] { ByName<QAction>("RTD2120Write", "About")->trigger(); }); });
    row("Run pressed by a screen reader", [this] { Queue([this] { Press(Control("Run")); }); });
    row("a shortcut", [this] { QueueKey(writer_, Qt::Key_A, Qt::ControlModifier); });
  }

  void inputIsDiscarded() {
    QFETCH(std::function<void()>, input);
    Control("Run")->setFocus();
    bool busy = false;
    desk_->bus.hook = [&] {
      const QCursor* cursor = QApplication::overrideCursor();
      busy = cursor != nullptr && cursor->shape() == Qt::WaitCursor;
      input();
    };
    Run();
    EndTimers(Control("Run"));
    QCOMPARE(desk_->log.Lines().size(), oneRun_);
    QVERIFY(busy);
    QVERIFY(QApplication::overrideCursor() == nullptr);
    QVERIFY(ByName<QAbstractButton>("RTD2120Write", "EraseOp")->isChecked());
    QVERIFY(ShownWindow("Form1") == nullptr && ShownWindow("Form2") == nullptr);

    desk_->log.Clear();
    Run();  // nothing stays pressed
    QCOMPARE(desk_->log.Lines().size(), oneRun_);
  }

  void aReleaseDuringTheOperationClicksNothing() {
    auto* option = Control("MainBank");
    Desk::Press("RTD2120Write", "BothBank");
    SendMouse(option, QEvent::MouseButtonPress);
    desk_->bus.hook = [option] {
      Queue([option] { SendMouse(option, QEvent::MouseButtonRelease); });
    };
    ByName<QAbstractButton>("RTD2120Write", "Run")->click();
    QApplication::processEvents();
    QCOMPARE(desk_->tool.rtdWriter.BankMode, tongxun2120::RtdBankMode::Both);
    QVERIFY(!ByName<QAbstractButton>("RTD2120Write", "MainBank")->isDown());
  }

  void aCloseRequestIsCarriedOut() {
    desk_->bus.hook = [this] { QCoreApplication::postEvent(writer_, new QCloseEvent); };
    Run();
    QVERIFY(!writer_->isEnabled());
    QCOMPARE(desk_->launcher->WriterState, OpenWriter::None);
  }

  void theEndOfTheSessionEndsTheProgram() {
    desk_->bus.hook = [] { QCoreApplication::postEvent(qApp, new QEvent(QEvent::Quit)); };
    QTimer::singleShot(0, this, [] { Run(); });
    QCOMPARE(QCoreApplication::exec(), 0);
    QCOMPARE(desk_->log.Lines().size(), oneRun_);
  }

 private:
  static void Run() {
    Desk::Press("RTD2120Write", "Run");
    QApplication::processEvents();
  }
  static QWidget* Control(const char* name) { return ByName<QWidget>("RTD2120Write", name); }

  std::optional<Desk> desk_;
  QWidget* writer_ = nullptr;
  std::size_t oneRun_ = 0;  // frames
};

QTEST_MAIN(OperationTest)
#include "operation_test.moc"
