// The launcher: start-up on a fresh and on a prepared installation, one writer at a time, and what
// is said while it starts.
#include "ui/window_test.h"
#include "widgets/dialogs.h"

class LauncherTest : public WindowTest {
  Q_OBJECT

 private slots:
  void init() { desk_.emplace(); }

  void freshInstallation() {
    std::filesystem::remove_all(desk_->folder / "program/Initial");
    Start();
    QCOMPARE(desk_->folder.Read("config/chipport.log"), std::string("\x03\x78"));
    QVERIFY(std::filesystem::exists(desk_->folder / "program/Initial/security.cod"));
    QCOMPARE(desk_->folder.Read("program/Initial/security.cod"), std::string());
    QVERIFY(kSecurity.Shown() != nullptr && kVskWriter.Shown() == nullptr);
    QVERIFY(!kSecurity.Shown()->geometry().intersects(desk_->launcher->geometry()));
    QCOMPARE(desk_->tool.boards.CurrentBoard, std::int16_t{0});
  }

  void securityCheckTakesTheFocusOnceAtTheStart() {
    desk_->folder.Write("program/Initial/security.cod", "");
    Start();
    QTRY_VERIFY(kSecurity.Shown()->isActiveWindow());
    kLauncher.Activate();
    for (const auto state : {Qt::WindowMinimized, Qt::WindowNoState}) {
      QWindowSystemInterface::handleWindowStateChanged(kLauncher.Shown()->windowHandle(), state);
      for (int turn = 0; turn < 2; ++turn) QApplication::processEvents();  // activating takes one
    }
    QVERIFY(kLauncher.Shown()->isActiveWindow());
  }

  void startUpState() {
    Tool& tool = desk_->tool;
    auto& writer = tool.vskWriter;
    tool.vskImages.CodeLoaded = writer.LoadPageView = writer.ReadPageView = true;
    tool.timing.SpeedFactor = 9;
    desk_->folder.Write("config/chipport.log", std::string("\x02\x78"));
    Start();
    QVERIFY(kSecurity.Shown() == nullptr);
    QCOMPARE(tool.port.PortBase, 0x278);
    QCOMPARE(tool.port.DataShadow, std::int16_t{0x7F});
    QCOMPARE(tool.boards.CurrentBoard, std::int16_t{1});
    QCOMPARE(tool.frames.HwCrc, -1);
    QCOMPARE(tool.frames.IspParams[3], std::int16_t{0xA5});
    QCOMPARE(tool.timing.SpeedFactor, std::int16_t{2});
    QCOMPARE(tool.timing.BitDelayCount, tool.timing.TickPollCount / 1000 * 2);
    QVERIFY(!tool.vskImages.CodeLoaded && !writer.LoadPageView && !writer.ReadPageView);
    QCOMPARE(tool.vskImages.CodeBuffer[65536], std::uint8_t{0xFF});
  }

  void opensTheVskWriterOnceAndSwitchesItsChip() {
    Start();
    kLauncher.Press("Command1");
    QWidget* writer = kVskWriter.Shown();
    kLauncher.Press("Command2");
    QCOMPARE(kVskWriter.Shown(), writer);
    QCOMPARE(desk_->tool.isp.ChipSelect, VskChip::Vsk630);
    QVERIFY(kVskWriter.IsOn("Option2"));
    const auto options = kVskWriter.Find("Frame1")->findChildren<QRadioButton*>();
    QCOMPARE(static_cast<std::size_t>(options.size()), kVskModels.size());
    for (QRadioButton* option : options) {
      kVskWriter.Press(option->objectName().toLatin1());
      QCOMPARE(option->text(), QLatin1String(desk_->tool.isp.Model().name));
    }

    writer->close();
    QVERIFY(kVskWriter.Shown() == nullptr);
    kLauncher.Press("Command1");
    QCOMPARE(desk_->tool.isp.ChipSelect, VskChip::Vsk830);
  }

  /// The first VSK writer shows the last calibration, also one made before it was there, and each
  /// one those that are made while it is open.
  void theVskWriterShowsTheCalibration() {
    Start();
    auto& timing = desk_->tool.timing;
    QVERIFY(timing.TickPollCount > 0);
    for (const bool first : {true, false}) {
      if (!first) kVskWriter.Shown()->close();
      kLauncher.Press("Command1");
      QCOMPARE(kVskWriter.Text("Text1"),
               first ? QStringLiteral(" %1").arg(timing.TickPollCount) : QString());
      timing.Calibrated(4711);
      QCOMPARE(kVskWriter.Text("Text1"), QStringLiteral(" 4711"));
    }

    init();
    Start();
    kLauncher.Press("Command3");
    desk_->tool.timing.TickPollCount = 815;
    desk_->tool.timing.Calibrated(815);
    kLauncher.Press("Command1");
    QCOMPARE(kVskWriter.Text("Text1"), QStringLiteral(" 815"));
  }

  void oneWriterAtATime() {
    Start();
    for (const bool closesItself : {false, true}) {
      kLauncher.Press("Command3");
      QWidget* writer = kRtdWriter.Shown();
      QVERIFY(writer != nullptr && kVskWriter.Shown() == nullptr);
      QCOMPARE(desk_->launcher->WriterState, OpenWriter::Rtd2120);
      kLauncher.Press("Command3");
      QCOMPARE(kRtdWriter.Shown(), writer);
      if (closesItself) writer->close();
      kLauncher.Press("Command2");
      QVERIFY(kRtdWriter.Shown() == nullptr && kVskWriter.Shown() != nullptr);
      QCOMPARE(desk_->launcher->WriterState, OpenWriter::Vsk);
    }
  }

  /// Close requests queue up while an operation holds the thread.
  void aWindowClosesOnce() {
    Start();
    for (const NamedWindow& window : {kVskWriter, kSettings, kRtdWriter}) {
      kLauncher.Press(window.name == kRtdWriter.name ? "Command3" : "Command1");
      if (window.name == kSettings.name) kVskWriter.Choose("about");
      QWidget* shown = window.Shown();
      QVERIFY2(shown != nullptr, window.name);
      for (int i = 0; i < 2; ++i) {
        QCloseEvent request;
        QApplication::sendEvent(shown, &request);
      }
      QVERIFY(!shown->isEnabled());
      shown->hide();
    }
    QCOMPARE(desk_->launcher->WriterState, OpenWriter::None);
  }

  void F1OpensTheManualInEveryWindow() {
    Start();
    kLauncher.Press("Command1");
    kVskWriter.Choose("about");
    QString said;
    ConfirmMessage(said);
    PressKey(kLauncher.Shown(), Qt::Key_F1);
    QVERIFY(said.startsWith(QStringLiteral("The manual is not there.|")));
    desk_->folder.Write("manual/operator-manual.html", "");
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "Open");
    for (const NamedWindow& window : {kLauncher, kVskWriter, kSettings}) {
      window.Activate();
      PressKey(window.Shown(), Qt::Key_F1);
    }
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    const auto page = (desk_->folder / "manual/operator-manual.html").string();
    QCOMPARE(opened_, QList<QUrl>(3, QUrl::fromLocalFile(QString::fromStdString(page))));
  }

  /// A path may look like rich text, and can be copied.
  void aMessageIsPlainTextForMouseAndKeyboard() {
    Start();
    const QString detail = QStringLiteral("It is the file /tmp/<b>x</b>.hex");
    QString spoken, selected;
    AnswerDialog<QMessageBox>([&](QMessageBox& box) {
      auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
      spoken = Told(label, QAccessible::Name);
      QTest::mouseClick(label, Qt::LeftButton);
      QTest::keyClick(label, Qt::Key_Home);
      QTest::keyClick(label, Qt::Key_End, Qt::ShiftModifier);
      selected = label->selectedText();
      box.accept();
    });
    ShowMessageBox(kLauncher.Shown(), "message", detail.toStdString());
    QCOMPARE(spoken, detail);
    QCOMPARE(selected, detail);
  }

  /// The key was pressed for what the message answers.
  void aHeldEnterClosesNoMessage() {
    Start();
    bool stays = false;
    AnswerDialog<QMessageBox>([&stays](QMessageBox& box) {
      for (const bool told : {false, true}) RepeatKey(&box, Qt::Key_Return, {}, told);
      stays = box.isVisible();
      PressKey(&box, Qt::Key_Return);
    });
    ShowMessageBox(kLauncher.Shown(), "message");
    QVERIFY(stays);
  }

  void exitAndTheCloseBoxEndTheProgram() {
    for (const bool byButton : {true, false}) {
      init();
      Start();
      QTimer::singleShot(0, qApp, [this, byButton] {
        byButton ? kLauncher.Press("Command4") : static_cast<void>(desk_->launcher->close());
      });
      QTimer::singleShot(20000, qApp, [] { QCoreApplication::exit(1); });
      QCOMPARE(QCoreApplication::exec(), 0);
    }
  }

  void aProblemIsSaidAtTheNextTurnAndBlocksNothing() {
    PostProblem("no port at <0x378>");
    QVERIFY(ShownWindow("PortProblem") == nullptr);  // the line operation runs on
    QApplication::processEvents();
    const QPointer box = qobject_cast<QMessageBox*>(ShownWindow("PortProblem"));
    QVERIFY(box && !box->isModal());
    QCOMPARE(box->text(), QStringLiteral("no port at <0x378>"));
    QCOMPARE(box->textFormat(), Qt::PlainText);
    QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(box.isNull());
  }

 public slots:
  void Open(const QUrl& page) { opened_ << page; }

 private:
  QList<QUrl> opened_;
};

int ui_launcher_test(int count, char** arguments) {
  return RunWindowTest<LauncherTest>(count, arguments);
}
#include "launcher_test.moc"
