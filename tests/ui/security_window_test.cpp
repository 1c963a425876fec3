// The Security Check window.
#include "ui/window_test.h"

class SecurityWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    desk_.emplace();
    desk_->folder.Write("program/Initial/security.cod", "");
    desk_->Start();
  }

  void checkAndEnterWriteTheFileAndExitAndEscapeLeaveIt() {
    const std::function<void()> ways[] = {
        [] { Desk::Press("Form3", "Command1"); }, [] { Key(Qt::Key_Return); },
        [] { Desk::Press("Form3", "Command2"); }, [] { Key(Qt::Key_Escape); }};
    for (std::size_t way = 0; way < 4; ++way) {
      init();
      Type({"94", "01", "5a"});
      ways[way]();
      QVERIFY(ShownWindow("Form3") == nullptr);
      const std::string file = desk_->folder.Read("program/Initial/security.cod");
      QCOMPARE(file, way < 2 ? std::string("\x94\x01\x5A\0", 4) : std::string());
      QCOMPARE(desk_->tool.frames.IspParams[0], std::int16_t{0});  // used at the next start
    }
  }

  void aWrongCountIsSaidAndLeavesNoFile() {
    Type({"94", "05", "5a"});
    QString said;
    ConfirmMessage(said);
    Desk::Press("Form3", "Command1");
    QCOMPARE(said, QStringLiteral("please input two word HEX number:(01-04)"));
    QVERIFY(ShownWindow("Form3") != nullptr);
    QVERIFY(!std::filesystem::exists(desk_->folder / "program/Initial/security.cod"));
  }

 private:
  static void Type(const QStringList& texts) {
    for (int i = 0; i < texts.size(); ++i) {
      const QByteArray box = "Text" + QByteArray::number(i + 1);
      QTest::keyClicks(ByName<QLineEdit>("Form3", box.constData()), texts[i]);
    }
  }
  static void Key(Qt::Key key) {
    Desk::Activate("Form3");
    QTest::keyClick(ByName<QLineEdit>("Form3", "Text3"), key);
  }

  std::optional<Desk> desk_;
};

QTEST_MAIN(SecurityWindowTest)
#include "security_window_test.moc"
