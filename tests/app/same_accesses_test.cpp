// isp-write and the windows reach the port with the same accesses, one by one.
#include "support/terminal_rig.h"
#include "ui/window_test.h"

class SameAccessesTest : public QObject {
  Q_OBJECT

  /// A program of windows, from its start to its end.
  static void Play(TerminalRig& rig, const std::function<void()>& session) {
    const auto tool = std::make_unique<Tool>(
        rig.accesses, rig.ticks, Directories{rig.folder / "program", rig.folder / "config"},
        Problem{});
    Main launcher(*tool);
    launcher.show();
    session();
  }

 private slots:
  void ofProgramming_data() {
    QTest::addColumn<QString>("chip");
    QTest::addColumn<QString>("launcher");
    QTest::addColumn<QString>("image");
    QTest::newRow("VSK830") << "vsk830"
                            << "Command1"
                            << "vsk830/thermostat.hex";
    QTest::newRow("VSK630") << "vsk630"
                            << "Command2"
                            << "vsk630/kiosk.H00";
    QTest::newRow("RTD2120") << "rtd2120"
                             << "Command3"
                             << "rtd2120/panel-bank1.hex";
  }

  void ofProgramming() {
    QFETCH(QString, chip);
    QFETCH(QString, launcher);
    QFETCH(QString, image);
    ApplyApplicationStyle();
    TerminalRig rig;
    for (const auto& choice : simulator::SimulatedBoard::Choices()) {
      if (chip.toUpper() == QLatin1String(choice.name)) rig.board.Connect(choice.chip);
    }
    const QString file = QStringLiteral(SOURCE_FOLDER "/samples/") + image;
    Play(rig, [&] {
      kLauncher.Press(launcher.toLatin1());
      ChooseFile(file);
      const bool rtd = chip == QLatin1String("rtd2120");
      const NamedWindow& writer = rtd ? kRtdWriter : kVskWriter;
      writer.Press(rtd ? "Com64K" : "Command1");
      if (!rtd) writer.Press("Option4");
      writer.Press(rtd ? "Run" : "Command4");
    });
    const auto ofWindows = std::exchange(rig.accesses.all, {});
    QVERIFY(ofWindows.size() > 10'000);

    QCOMPARE(rig.Run({"program", chip.toStdString(), file.toStdString(), "--no-compare"}), 0);
    QVERIFY(rig.accesses.all == ofWindows);
    rig.accesses.all.clear();
    QCOMPARE(rig.Run({"program", chip.toStdString(), file.toStdString()}), 0);
    QVERIFY(std::equal(ofWindows.begin(), ofWindows.end() - 2, rig.accesses.all.begin()));
  }
};

int app_same_accesses_test(int count, char** arguments) {
  return RunWindowTest<SameAccessesTest>(count, arguments);
}
#include "same_accesses_test.moc"
