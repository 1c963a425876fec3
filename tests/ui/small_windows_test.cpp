// The Settings window, with the port address and the bus speed, and the Security Check window.
#include "ui/window_test.h"

class SmallWindowsTest : public WindowTest {
  Q_OBJECT

 private slots:
  void init() { StartWriter("Command1", simulator::ConnectedChip::None); }

  void settingsOpenWithTheStateAndTheSliderSetsTheSpeed() {
    auto& timing = desk_->tool.timing;
    int calibrations = 0;
    timing.Calibrated = [&calibrations](std::int32_t) { ++calibrations; };
    kVskWriter.Choose("about");
    QCOMPARE(kSettings.Shown()->focusWidget(), kSettings.Find("Text3"));
    QCOMPARE(calibrations, 1);
    QCOMPARE(kSettings.Text("Text2"), QStringLiteral("2"));

    QTest::keyClick(kSettings.Find("HScroll1"), Qt::Key_Right);
    QCOMPARE(timing.SpeedFactor, std::int16_t{3});
    QCOMPARE(kSettings.Text("Text2"), QStringLiteral("3"));
    QCOMPARE(calibrations, 2);
    QCOMPARE(timing.BitDelayCount, timing.TickPollCount / 1000 * 3);
    kSettings.Press("Command1");
    QVERIFY(kSettings.Shown() == nullptr);

    timing.SpeedFactor = 5;
    kVskWriter.Choose("about");
    QCOMPARE(calibrations, 2);  // the slider's own initial value

    // A drag counts where it is let go.
    auto* slider = kSettings.Find<QSlider>("HScroll1");
    QWindow* window = kSettings.Shown()->windowHandle();
    const auto at = [slider](int value) {
      QStyleOptionSlider option;
      option.initFrom(slider);
      option.minimum = slider->minimum();
      option.maximum = slider->maximum();
      option.sliderPosition = value;
      const QRect handle = slider->style()->subControlRect(QStyle::CC_Slider, &option,
                                                           QStyle::SC_SliderHandle, slider);
      return slider->mapTo(slider->window(), handle.center());
    };
    QTest::mousePress(window, Qt::LeftButton, {}, at(5));
    for (int value = 6; value <= 9; ++value) QTest::mouseMove(window, at(value));
    QCOMPARE(kSettings.Text("Text2"), QStringLiteral("9"));
    QCOMPARE(calibrations, 2);
    QTest::mouseRelease(window, Qt::LeftButton, {}, at(9));
    QCOMPARE(slider->value(), 9);
    QCOMPARE(timing.SpeedFactor, std::int16_t{9});
    QCOMPARE(calibrations, 3);
    QTest::mouseClick(window, Qt::LeftButton, {}, at(1));  // beside the handle: a step
    QCOMPARE(kSettings.Text("Text2"), QStringLiteral("8"));
    QWindowSystemInterface::handleWheelEvent(window, at(8), window->mapToGlobal(at(8)), {},
                                             {0, 120});
    QApplication::processEvents();
    QCOMPARE(calibrations, 5);
    QCOMPARE(timing.SpeedFactor, static_cast<std::int16_t>(slider->value()));
    timing.Calibrated = nullptr;
  }

  /// It is input that was made while the thread was held.
  void anEnterReleasedWhileTheSpeedIsMeasuredAppliesNothing() {
    kVskWriter.Choose("about");
    kSettings.Activate();
    QWindow* window = kSettings.Shown()->windowHandle();
    PressKey(kSettings.Shown(), Qt::Key_Return);
    desk_->tool.port.PortBase = kOldBase;
    desk_->tool.timing.Calibrated = [window](std::int32_t) {
      QWindowSystemInterface::handleKeyEvent(window, QEvent::KeyRelease, Qt::Key_Return, {});
    };
    const auto* slider = kSettings.Find("HScroll1");
    const QPoint at = slider->mapTo(slider->window(), slider->rect().center());
    QWindowSystemInterface::handleWheelEvent(window, at, window->mapToGlobal(at), {}, {0, 120});
    QApplication::processEvents();
    desk_->tool.timing.Calibrated = nullptr;
    QVERIFY(kSettings.Text("Text2") != QStringLiteral("2"));
    QCOMPARE(desk_->tool.port.PortBase, kOldBase);
  }

  /// A screen reader's press is a call, which no modal box keeps out.
  void aMessageKeepsItsWindowOpen() {
    for (const std::string_view by : {"Enter", "Text3", "F1"}) {
      kVskWriter.Choose("about");
      kSettings.Activate();
      bool stays = false;
      AnswerDialog<QMessageBox>([&stays](QMessageBox& box) {
        QWidget* back = kSettings.Find("Command1");
        PressAsReader(back);
        EndTimers(back);
        stays = kSettings.Shown() != nullptr;
        if (stays) box.accept();
      });
      if (by == "F1") {
        PressKey(kSettings.Shown(), Qt::Key_F1);
      } else if (by == "Text3") {
        QTest::keyClick(kSettings.Find("Text3"), Qt::Key_Return);
      } else {
        kSettings.Press("Enter");
      }
      QVERIFY2(stays, by.data());
      QCOMPARE(kSettings.Shown() == nullptr, by == "Enter");
    }
  }

  void saysOnceThatAnAddressHoldsForThisRunOnly() {
    std::filesystem::remove(desk_->folder / "config/chipport.log");
    std::filesystem::create_directory(desk_->folder / "config/chipport.log");
    kVskWriter.Choose("about");
    for (const bool told : {false, true}) {
      QString said;
      ConfirmMessage(said);
      QTest::keyClick(kSettings.Find("Text3"), Qt::Key_Return);
      QCOMPARE(said.contains(QStringLiteral("holds for this run only")), !told);
    }
  }

  void appliesAnAddress() {
    Apply("278", 0x278, "278", "0278");
    Apply(" ec ", 0xEC, " ec ", "00ec");
    Apply("0", 0x378, "378", "0378");
    // A text that is pasted may hold what no key types.
    const QString nul = QStringLiteral("37") + QChar(0) + QStringLiteral("8");
    for (const QString& wrong : {QString(), QString("37G"), QString("0x37"), QString("-1"), nul}) {
      Apply(wrong, kOldBase, "300", QByteArray("old").toHex());
    }
  }

  /// The button Check: see the played session.
  void enterWritesTheSecurityCodesAndExitAndEscapeLeaveThem() {
    for (const auto& [control, key] : {std::pair{"Text3", Qt::Key_Return},
                                       {"Text3", Qt::Key_Escape},
                                       {"Command2", Qt::Key_Space}}) {
      OpenSecurityCheck({"94", "01", "5a"});
      kSecurity.Activate();
      QTest::keyClick(kSecurity.Find(control), key);
      QVERIFY(kSecurity.Shown() == nullptr);
      const std::string file = desk_->folder.Read("program/Initial/security.cod");
      QCOMPARE(file, key == Qt::Key_Return ? std::string("\x94\x01\x5A\0", 4) : std::string());
      QCOMPARE(desk_->tool.frames.IspParams[0], std::int16_t{0});  // used at the next start
    }
  }

  void whyTheSecurityCodesAreNotWrittenIsSaid() {
    for (const QString& count : {QString("05"), QString("01")}) {
      OpenSecurityCheck({"94", count, "5a"});
      QTRY_VERIFY(kSecurity.Shown()->isActiveWindow());  // not the launcher
      const auto file = desk_->folder / "program/Initial/security.cod";
      desk_->folder.Write("program/Initial/security.cod.part/in the way", "");
      QString said;
      ConfirmMessage(said);
      kSecurity.Press("Command1");
      const QString why = count == "05"
                              ? QStringLiteral("please input two word HEX number:(01-04)|")
                              : "the entry parameters could not be written to " +
                                    QString::fromStdString(file.string()) + "|";
      QVERIFY2(said.startsWith(why) && (said == why) == (count == "05"), qPrintable(said));
      QVERIFY(kSecurity.Shown() != nullptr);
      QCOMPARE(std::filesystem::exists(file), count == "01");  // as it was
    }
  }

 private:
  static constexpr int kOldBase = 0x300;

  /// By the Enter key and by the button; `file`: the first bytes of the kept address, in hex.
  void Apply(const QString& typed, int base, const QString& shown, const QByteArray& file) {
    const bool accepted = base != kOldBase;
    const QString hex = QString::number(base, 16).toUpper();
    for (const bool byKey : {true, false}) {
      desk_->folder.Write("config/chipport.log", "old");
      desk_->tool.port.PortBase = kOldBase;
      kVskWriter.Choose("about");
      auto* box = kSettings.Find<QLineEdit>("Text3");
      box->setText(typed);
      QString said;
      ConfirmMessage(said);
      byKey ? QTest::keyClick(box, Qt::Key_Return) : kSettings.Press("Enter");
      QCOMPARE(said, accepted ? "Parallel Address Modify is 0x" + hex + "|"
                              : QStringLiteral("please input HEX number:(0000-FFFF)|"));
      QCOMPARE(desk_->tool.port.PortBase, base);
      const std::string written = desk_->folder.Read("config/chipport.log");
      QVERIFY(QByteArray::fromStdString(written).toHex().startsWith(file));
      QCOMPARE(kSettings.Shown() != nullptr, byKey || !accepted);
      if (!byKey && accepted) continue;
      QCOMPARE(kSettings.Text("Text3"), shown);
      // The release of the Enter that closed the message box applies nothing again.
      QTest::keyRelease(box, Qt::Key_Return);
      kSettings.Shown()->close();
    }
  }

  /// At the start of a program without security codes.
  void OpenSecurityCheck(const QStringList& texts) {
    desk_.emplace();
    desk_->folder.Write("program/Initial/security.cod", "");
    Start();
    for (int i = 0; i < texts.size(); ++i) {
      const QByteArray box = "Text" + QByteArray::number(i + 1);
      if (i == 0) QCOMPARE(kSecurity.Shown()->focusWidget(), kSecurity.Find("Text1"));
      QTest::keyClicks(kSecurity.Find(box.constData()), texts[i]);
    }
  }
};

int ui_small_windows_test(int count, char** arguments) {
  return RunWindowTest<SmallWindowsTest>(count, arguments);
}
#include "small_windows_test.moc"
