// The Settings window: the port address and the bus speed.
#include "ui/window_test.h"

class SettingsWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    desk_ = std::make_unique<Desk>();
    desk_->Start();
    Desk::Press("Main", "Command1");
  }
  void cleanup() { desk_.reset(); }

  void opensFromEitherWayWithTheState() {
    calibrations_ = 0;
    Open();
    QCOMPARE(calibrations_, 1);
    QCOMPARE(ShownWindow("Form2")->windowTitle(), QStringLiteral("Setting"));
    QCOMPARE(ShownText("Form2", "Label2"), QStringLiteral("Version V100"));
    QCOMPARE(ShownText("Form2", "Text3"), QStringLiteral("378"));
    QCOMPARE(ShownText("Form2", "Text2"), QStringLiteral("2"));

    calibrations_ = 0;
    QTest::keyClick(ByName<QSlider>("Form2", "HScroll1"), Qt::Key_Right);
    QCOMPARE(desk_->tool.timing.SpeedFactor, std::int16_t{3});
    QCOMPARE(ShownText("Form2", "Text2"), QStringLiteral("3"));
    QCOMPARE(calibrations_, 1);
    QCOMPARE(desk_->tool.timing.BitDelayCount, desk_->tool.timing.TickPollCount / 1000 * 3);
    Desk::Press("Form2", "Command1");
    QVERIFY(ShownWindow("Form2") == nullptr);

    desk_->tool.timing.SpeedFactor = 5;
    calibrations_ = 0;
    Open();
    QCOMPARE(calibrations_, 0);  // the slider's own initial value
  }

  void saysOnceThatAnAddressHoldsForThisRunOnly() {
    std::filesystem::remove(desk_->folder / "config/chipport.log");
    std::filesystem::create_directory(desk_->folder / "config/chipport.log");
    Open();
    for (const bool told : {false, true}) {
      QString detail;
      AnswerDialog<QMessageBox>([&detail](QMessageBox& box) {
        detail = box.informativeText();
        box.accept();
      });
      QTest::keyClick(ByName<QLineEdit>("Form2", "Text3"), Qt::Key_Return);
      QCOMPARE(detail.contains(QStringLiteral("holds for this run only")), !told);
    }
  }

  void appliesAnAddress_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("base");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QByteArray>("file");
    const QString done = QStringLiteral("Parallel Address Modify is 0x");
    const QString wrong = QStringLiteral("please input HEX number:(0000-FFFF)");
    QTest::newRow("278") << "278" << done + "278" << 0x278 << "278" << QByteArray("\x02\x78");
    QTest::newRow("blanks") << " ec " << done + "EC" << 0xEC << " ec " << QByteArray("\0\xEC", 2);
    QTest::newRow("zero") << "0" << done + "378" << 0x378 << "378" << QByteArray("\x03\x78");
    QTest::newRow("empty") << "" << wrong << 0x300 << "300" << QByteArray("old");
    QTest::newRow("no digit") << "37G" << wrong << 0x300 << "300" << QByteArray("old");
    QTest::newRow("prefix") << "0x37" << wrong << 0x300 << "300" << QByteArray("old");
    QTest::newRow("sign") << "-1" << wrong << 0x300 << "300" << QByteArray("old");
    // A text that is pasted may hold what no key types.
    const QString nul = QStringLiteral("37") + QChar(0) + QStringLiteral("8");
    QTest::newRow("NUL") << nul << wrong << 0x300 << "300" << QByteArray("old");
  }

  void appliesAnAddress() {
    QFETCH(QString, typed);
    QFETCH(QString, message);
    QFETCH(int, base);
    QFETCH(QString, shown);
    QFETCH(QByteArray, file);
    const bool accepted = message.startsWith(QStringLiteral("Parallel"));
    for (const bool byKey : {true, false}) {
      desk_->folder.Write("config/chipport.log", "old");
      desk_->tool.port.PortBase = 0x300;
      Open();
      auto* box = ByName<QLineEdit>("Form2", "Text3");
      box->setText(typed);
      QString said;
      ConfirmMessage(said);
      byKey ? QTest::keyClick(box, Qt::Key_Return) : Desk::Press("Form2", "Enter");
      QCOMPARE(said, message);
      QCOMPARE(desk_->tool.port.PortBase, base);
      QCOMPARE(
          QByteArray::fromStdString(desk_->folder.Read("config/chipport.log")).left(file.size()),
          file);
      const bool open = ShownWindow("Form2") != nullptr;
      QCOMPARE(open, byKey || !accepted);
      if (!open) continue;
      QCOMPARE(ShownText("Form2", "Text3"), shown);
      // The release of the Enter that closed the message box applies nothing again.
      QTest::keyRelease(box, Qt::Key_Return);
      ShownWindow("Form2")->close();
    }
  }

 private:
  void Open() {
    const auto shown = desk_->tool.timing.Calibrated;
    desk_->tool.timing.Calibrated = [this, shown](std::int32_t count) {
      ++calibrations_;
      shown(count);
    };
    ByName<QAction>("Form1", "about")->trigger();
  }

  std::unique_ptr<Desk> desk_;
  int calibrations_ = 0;
};

QTEST_MAIN(SettingsWindowTest)
#include "settings_window_test.moc"
