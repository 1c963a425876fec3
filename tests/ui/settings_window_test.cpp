// The Settings window: the port address and the bus speed.
#include "ui/window_test.h"

class SettingsWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    desk_.emplace();
    desk_->Start();
    Desk::Press("Main", "Command1");
  }

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
      QString said, detail;
      ConfirmMessage(said, &detail);
      QTest::keyClick(ByName<QLineEdit>("Form2", "Text3"), Qt::Key_Return);
      QCOMPARE(detail.contains(QStringLiteral("holds for this run only")), !told);
    }
  }

  void appliesAnAddress() {
    Apply("278", 0x278, "278", "\x02\x78");
    Apply(" ec ", 0xEC, " ec ", QByteArray("\0\xEC", 2));
    Apply("0", 0x378, "378", "\x03\x78");
    // A text that is pasted may hold what no key types.
    const QString nul = QStringLiteral("37") + QChar(0) + QStringLiteral("8");
    for (const QString& wrong :
         {QString(), QStringLiteral("37G"), QStringLiteral("0x37"), QStringLiteral("-1"), nul}) {
      Apply(wrong, kOldBase, "300", "old");
    }
  }

 private:
  static constexpr int kOldBase = 0x300;

  void Apply(const QString& typed, int base, const QString& shown, const QByteArray& file) {
    const bool accepted = base != kOldBase;
    const QString hex = QString::number(base, 16).toUpper();
    const QString message = accepted ? "Parallel Address Modify is 0x" + hex
                                     : QStringLiteral("please input HEX number:(0000-FFFF)");
    for (const bool byKey : {true, false}) {
      desk_->folder.Write("config/chipport.log", "old");
      desk_->tool.port.PortBase = kOldBase;
      Open();
      auto* box = ByName<QLineEdit>("Form2", "Text3");
      box->setText(typed);
      QString said;
      ConfirmMessage(said);
      byKey ? QTest::keyClick(box, Qt::Key_Return) : Desk::Press("Form2", "Enter");
      QCOMPARE(said, message);
      QCOMPARE(desk_->tool.port.PortBase, base);
      const std::string written = desk_->folder.Read("config/chipport.log");
      QCOMPARE(QByteArray::fromStdString(written).left(file.size()), file);
      const bool open = ShownWindow("Form2") != nullptr;
      QCOMPARE(open, byKey || !accepted);
      if (!open) continue;
      QCOMPARE(ShownText("Form2", "Text3"), shown);
      // The release of the Enter that closed the message box applies nothing again.
      QTest::keyRelease(box, Qt::Key_Return);
      ShownWindow("Form2")->close();
    }
  }
  void Open() {
    const auto shown = desk_->tool.timing.Calibrated;
    desk_->tool.timing.Calibrated = [this, shown](std::int32_t count) {
      ++calibrations_;
      shown(count);
    };
    ByName<QAction>("Form1", "about")->trigger();
  }

  std::optional<Desk> desk_;
  int calibrations_ = 0;
};

QTEST_MAIN(SettingsWindowTest)
#include "settings_window_test.moc"
