// isp-write and the windows reach the port with the same accesses, one by one.
#include "support/terminal_rig.h"
#include "ui/window_test.h"

class SameAccessesTest : public QObject {
  Q_OBJECT

  /// A program of windows, from its start to its end.
  static void Play(TerminalRig& rig, const std::function<void()>& session) {
    TerminalRig::Port port(rig);
    const auto tool = std::make_unique<Tool>(
        port, rig.ticks,
        Directories{rig.folder / "program", rig.folder / "config", {}, rig.folder / "state"},
        Problem{});
    Main launcher(*tool);
    launcher.show();
    session();
  }

 private slots:
  void ofProgramming() {
    ApplyApplicationStyle();
    struct Row {
      const char *chip, *launcher, *image;
    };
    for (const Row& row : {Row{"VSK830", "Command1", "vsk830/thermostat.hex"},
                           {"VSK630", "Command2", "vsk630/kiosk.H00"},
                           {"RTD2120", "Command3", "rtd2120/panel-bank1.hex"}}) {
      TerminalRig rig;
      for (const auto& choice : simulator::SimulatedBoard::Choices()) {
        if (choice.name == std::string(row.chip)) rig.board.Connect(choice.chip);
      }
      const std::string file = rig.Sample(row.image);
      Play(rig, [&] {
        kLauncher.Press(row.launcher);
        ChooseFile(QString::fromStdString(file));
        const bool rtd = row.chip == std::string("RTD2120");
        const NamedWindow& writer = rtd ? kRtdWriter : kVskWriter;
        writer.Press(rtd ? "Com64K" : "Command1");
        if (!rtd) writer.Press("Option4");
        writer.Press(rtd ? "Run" : "Command4");
      });
      const auto ofWindows = std::exchange(rig.accesses, {});
      QVERIFY2(ofWindows.size() > 10'000, row.chip);
      const std::string log = rig.folder.Read("state/runs.csv");
      QVERIFY2(log.ends_with(",378,Simulated cable,isp-writer\r\n"), row.chip);

      const std::string program = std::string("program ") + row.chip + " " + file;
      QVERIFY2(rig.Run(program + " --no-compare") == 0, row.chip);
      QVERIFY2(rig.accesses == ofWindows, row.chip);
      rig.accesses.clear();
      QVERIFY2(rig.Run(program) == 0, row.chip);
      QVERIFY2(std::equal(ofWindows.begin(), ofWindows.end() - 2, rig.accesses.begin()), row.chip);
    }
  }
};

int app_same_accesses_test(int count, char** arguments) {
  return RunWindowTest<SameAccessesTest>(count, arguments);
}
#include "same_accesses_test.moc"
