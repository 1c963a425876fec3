// The launcher: start-up on a fresh and on a prepared installation, and one writer at a time.
#include "ui/window_test.h"

class LauncherTest : public QObject {
  Q_OBJECT

 private slots:
  void init() { desk_.emplace(); }

  void freshInstallation() {
    std::filesystem::remove_all(desk_->folder / "program/Initial");
    desk_->Start();
    QCOMPARE(desk_->folder.Read("config/chipport.log"), std::string("\x03\x78"));
    QVERIFY(std::filesystem::exists(desk_->folder / "program/Initial/security.cod"));
    QCOMPARE(desk_->folder.Read("program/Initial/security.cod"), std::string());
    QWidget* security = ShownWindow("Form3");
    QVERIFY(security != nullptr);
    QVERIFY(!security->geometry().intersects(desk_->launcher->geometry()));
    QVERIFY(ShownWindow("Form1") == nullptr);
    QCOMPARE(desk_->tool.boards.CurrentBoard, std::int16_t{0});
  }

  void startUpState() {
    Tool& tool = desk_->tool;
    tool.vskImages.CodeLoaded = true;
    tool.timing.SpeedFactor = 9;
    desk_->folder.Write("config/chipport.log", std::string("\x02\x78"));
    desk_->Start();
    QVERIFY(ShownWindow("Form3") == nullptr);
    QCOMPARE(desk_->launcher->windowTitle(), QStringLiteral("Main"));
    QCOMPARE(tool.port.PortBase, 0x278);
    QCOMPARE(tool.port.DataShadow, std::int16_t{0x7F});
    QCOMPARE(tool.boards.CurrentBoard, std::int16_t{1});
    QCOMPARE(tool.frames.HwCrc, -1);
    QCOMPARE(tool.frames.IspParams[3], std::int16_t{0xA5});
    QCOMPARE(tool.timing.SpeedFactor, std::int16_t{2});
    QCOMPARE(tool.timing.BitDelayCount, tool.timing.TickPollCount / 1000 * 2);
    QVERIFY(!tool.vskImages.CodeLoaded);
    QCOMPARE(tool.vskImages.CodeBuffer[65536], std::uint8_t{0xFF});
  }

  void opensTheVskWriterOnceAndSwitchesItsChip() {
    desk_->Start();
    Desk::Press("Main", "Command1");
    QWidget* writer = ShownWindow("Form1");
    QCOMPARE(desk_->launcher->WriterState, OpenWriter::Vsk);
    const auto count = desk_->tool.timing.TickPollCount;
    QCOMPARE(ShownText("Form1", "Text1"), QStringLiteral(" %1").arg(count));
    QVERIFY(!ByName<QAction>("Form1", "Lcf")->isEnabled());
    QVERIFY(ByName<QAction>("Form1", "Lnf")->isEnabled());
    Desk::Press("Main", "Command2");
    QCOMPARE(ShownWindow("Form1"), writer);
    QCOMPARE(desk_->tool.isp.ChipSelect, VskChip::Vsk630);
    QVERIFY(ByName<QAbstractButton>("Form1", "Option2")->isChecked());
    Desk::Press("Form1", "Option1");
    QCOMPARE(desk_->tool.isp.ChipSelect, VskChip::Vsk830);
    Desk::Press("Form1", "Option2");

    writer->close();
    QCOMPARE(desk_->launcher->WriterState, OpenWriter::None);
    QVERIFY(ShownWindow("Form1") == nullptr);
    Desk::Press("Main", "Command1");
    QCOMPARE(desk_->tool.isp.ChipSelect, VskChip::Vsk830);
    QCOMPARE(ShownText("Form1", "Text1"), QString());
  }

  void oneWriterAtATime() {
    desk_->Start();
    for (int round = 0; round < 2; ++round) {
      Desk::Press("Main", "Command3");
      QWidget* writer = ShownWindow("RTD2120Write");
      QVERIFY(writer != nullptr && ShownWindow("Form1") == nullptr);
      QCOMPARE(desk_->launcher->WriterState, OpenWriter::Rtd2120);
      Desk::Press("Main", "Command3");
      QCOMPARE(ShownWindow("RTD2120Write"), writer);
      if (round == 1) writer->close();
      Desk::Press("Main", "Command2");
      QVERIFY(ShownWindow("RTD2120Write") == nullptr && ShownWindow("Form1") != nullptr);
      QCOMPARE(desk_->launcher->WriterState, OpenWriter::Vsk);
    }
  }

  /// Close requests queue up while an operation holds the thread.
  void aWindowClosesOnce() {
    desk_->Start();
    for (const char* name : {"Form1", "Form2", "RTD2120Write"}) {
      Desk::Press("Main", name == QLatin1String("RTD2120Write") ? "Command3" : "Command1");
      if (name == QLatin1String("Form2")) ByName<QAction>("Form1", "about")->trigger();
      QWidget* window = ShownWindow(name);
      QVERIFY2(window != nullptr, name);
      for (int i = 0; i < 2; ++i) {
        QCloseEvent request;
        QApplication::sendEvent(window, &request);
      }
      QVERIFY(!window->isEnabled());
      window->hide();
    }
    QCOMPARE(desk_->launcher->WriterState, OpenWriter::None);
  }

  void exitAndTheCloseBoxEndTheProgram() {
    for (const bool byButton : {true, false}) {
      desk_.emplace();
      desk_->Start();
      QTimer::singleShot(0, qApp, [this, byButton] {
        byButton ? Desk::Press("Main", "Command4") : static_cast<void>(desk_->launcher->close());
      });
      QTimer::singleShot(20000, qApp, [] { QCoreApplication::exit(1); });
      QCOMPARE(QCoreApplication::exec(), 0);
    }
  }

 private:
  std::optional<Desk> desk_;
};

QTEST_MAIN(LauncherTest)
#include "launcher_test.moc"
