// What the operator does in any window while an operation holds the thread.
#include "ui/window_test.h"

/// Counts what passes on the bus; `hook` runs once, at the next START, while an operation holds the
/// thread.
struct HookedBus final : simulator::BusListener {
  int frames = 0;
  std::function<void()> hook;

  void Started(bool) override {
    if (hook) std::exchange(hook, nullptr)();
    ++frames;
  }
  void Byte(std::uint8_t, bool, bool) override {}
  void Stopped() override {}
};

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

void QueueKey(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  Queue([=] { QTest::keyClick(kRtdWriter.Shown()->windowHandle(), key, modifiers); });
}

}  // namespace

class OperationTest : public WindowTest {
  Q_OBJECT

 private slots:
  void init() {
    StartWriter("Command3", simulator::ConnectedChip::Rtd2120);
    desk_->board.wire.ListenTo(&bus_);
    kRtdWriter.Activate();
    kRtdWriter.Press("EraseOp");
    Run();  // the runs that follow find the chip in ISP mode
    oneRun_ = Run();
    QVERIFY(oneRun_ > 0);
  }

  void inputIsDiscarded() {
    const std::pair<const char*, std::function<void()>> inputs[] = {
        {"a second click on Run", [] { QueueClick(kRtdWriter.Find("Run")); }},
        {"a click on an option", [] { QueueClick(kRtdWriter.Find("AutoOp")); }},
        {"a click on the launcher", [] { QueueClick(kLauncher.Find("Command1")); }},
        {"the space bar on Run", [] { QueueKey(Qt::Key_Space, {}); }},
        {"a menu entry, by a screen reader", [] { Queue([] { kRtdWriter.Choose("About"); }); }},
        {"Run, by a screen reader", [] { Queue([] { PressAsReader(kRtdWriter.Find("Run")); }); }},
        {"a shortcut", [] { QueueKey(Qt::Key_A, Qt::ControlModifier); }}};
    for (const auto& [name, input] : inputs) {
      init();
      kRtdWriter.Find("Run")->setFocus();
      bool busy = false;
      bus_.hook = [&busy, &input = input] {
        const QCursor* cursor = QApplication::overrideCursor();
        busy = cursor != nullptr && cursor->shape() == Qt::WaitCursor;
        input();
      };
      const int before = bus_.frames;
      Run();
      EndTimers(kRtdWriter.Find("Run"));
      QVERIFY2(bus_.frames - before == oneRun_, name);
      QVERIFY2(busy && QApplication::overrideCursor() == nullptr, name);
      QVERIFY2(kRtdWriter.IsOn("EraseOp"), name);
      QVERIFY2(kVskWriter.Shown() == nullptr && kSettings.Shown() == nullptr, name);
      QVERIFY2(Run() == oneRun_, name);  // nothing stays pressed
    }
  }

  void aReleaseDuringTheOperationClicksNothing() {
    auto* option = kRtdWriter.Find<QAbstractButton>("MainBank");
    kRtdWriter.Press("BothBank");
    SendMouse(option, QEvent::MouseButtonPress);
    bus_.hook = [option] { Queue([option] { SendMouse(option, QEvent::MouseButtonRelease); }); };
    kRtdWriter.Find<QAbstractButton>("Run")->click();
    QApplication::processEvents();
    QCOMPARE(desk_->tool.rtdWriter.BankMode, tongxun2120::RtdBankMode::Both);
    QVERIFY(!option->isDown());
  }

  /// The window system asks the native window; the program itself asks the widget.
  void aCloseRequestIsCarriedOut() {
    for (const bool byWindowSystem : {true, false}) {
      init();
      QWidget* writer = kRtdWriter.Shown();
      bus_.hook = [=] {
        if (!byWindowSystem) return QCoreApplication::postEvent(writer, new QCloseEvent);
        QWindowSystemInterface::handleCloseEvent(writer->windowHandle());
      };
      QCOMPARE(Run(), oneRun_);
      QVERIFY(!writer->isEnabled() && !writer->isVisible());
      QCOMPARE(desk_->launcher->WriterState, OpenWriter::None);
    }
  }

  void whatIsThrownInAHandlerIsTold() {
    const std::pair<std::function<void()>, QString> faults[] = {
        {[] { throw std::runtime_error("no more memory"); }, QStringLiteral("no more memory|")},
        {[] { throw 1; }, QStringLiteral("unknown error|")}};
    for (const auto& [fault, text] : faults) {
      QString said;
      AnswerDialog<QMessageBox>([&said](QMessageBox& box) {
        said = box.text() + QLatin1Char('|') + box.informativeText();
        kRtdWriter.Choose("exit");  // as a screen reader can
        if (kRtdWriter.Shown() != nullptr) box.accept();
      });
      bus_.hook = fault;
      kRtdWriter.Press("Run");
      QCOMPARE(said, text);
      QCOMPARE(Run(), oneRun_);  // the program goes on
    }
  }

  void whatEndsTheProgramWaitsForTheOperation() {
    for (const bool session : {false, true}) {
      init();
      bus_.hook = [=, this] {
        if (session) return QCoreApplication::postEvent(qApp, new QEvent(QEvent::Quit));
        QWindowSystemInterface::handleCloseEvent(desk_->launcher->windowHandle());
      };
      int frames = 0;
      QTimer::singleShot(0, this, [&] { frames = Run(); });
      QTimer::singleShot(20000, qApp, [] { QCoreApplication::exit(1); });
      QCOMPARE(QCoreApplication::exec(), 0);
      QCOMPARE(frames, oneRun_);
    }
  }

 private:
  /// Returns how many frames passed.
  int Run() {
    const int before = bus_.frames;
    kRtdWriter.Press("Run");
    QApplication::processEvents();
    return bus_.frames - before;
  }

  HookedBus bus_;
  int oneRun_ = 0;  // frames
};

int ui_operation_test(int count, char** arguments) {
  return RunWindowTest<OperationTest>(count, arguments);
}
#include "operation_test.moc"
