// The Security Check window.
#include "ui/window_test.h"

class SecurityWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    desk_ = std::make_unique<Desk>();
    desk_->folder.Write("program/Initial/security.cod", "");
    desk_->Start();
  }
  void cleanup() { desk_.reset(); }

  void captions() {
    const QStringList captions{"Slave Address:",        "Nember Of Security Codes：",
                               "First Security Code：", "Second Security Code：",
                               "Third Security Code：", "Fourth Security Code："};
    for (int i = 0; i < 6; ++i) {
      const QByteArray label = "Label" + QByteArray::number(i + 2);
      QCOMPARE(ShownText("Form3", label.constData()), captions[i]);
    }
    QCOMPARE(ShownWindow("Form3")->findChildren<QLabel*>(QStringLiteral("Label8")).size(), 6);
  }

  void aCompleteEntryIsWrittenAndUsedAtTheNextStart() {
    Type({"94", "01", "5a"});
    Desk::Press("Form3", "Command1");
    QVERIFY(ShownWindow("Form3") == nullptr);
    QCOMPARE(File(), std::string("\x94\x01\x5A\0", 4));
    QCOMPARE(desk_->tool.frames.IspParams[0], std::int16_t{0});
  }

  void enterChecks() {
    Type({"94", "01", "5a"});
    QTest::keyClick(ByName<QLineEdit>("Form3", "Text3"), Qt::Key_Return);
    QVERIFY(ShownWindow("Form3") == nullptr);
    QCOMPARE(File(), std::string("\x94\x01\x5A\0", 4));
  }

  void escapeLeavesTheFile() {
    Type({"94", "01", "5a"});
    ShownWindow("Form3")->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(ShownWindow("Form3")));
    QTest::keyClick(ByName<QLineEdit>("Form3", "Text3"), Qt::Key_Escape);
    QVERIFY(ShownWindow("Form3") == nullptr);
    QCOMPARE(File(), std::string());
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

  void exitLeavesTheFile() {
    Type({"94", "01", "5a"});
    Desk::Press("Form3", "Command2");
    QVERIFY(ShownWindow("Form3") == nullptr);
    QCOMPARE(File(), std::string());
  }

 private:
  void Type(const QStringList& texts) {
    for (int i = 0; i < texts.size(); ++i) {
      const QByteArray box = "Text" + QByteArray::number(i + 1);
      QTest::keyClicks(ByName<QLineEdit>("Form3", box.constData()), texts[i]);
    }
  }
  std::string File() const { return desk_->folder.Read("program/Initial/security.cod"); }

  std::unique_ptr<Desk> desk_;
};

QTEST_MAIN(SecurityWindowTest)
#include "security_window_test.moc"
