// The VSK writer window as an operator uses it, on the simulated board.
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <QMenu>
#include <QScrollBar>

#include "ui/window_test.h"

/// Counts how often a control is painted while an operation holds the thread.
class RepaintCounter : public QObject {
 public:
  int count = 0;
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return false;
  }
};

class VskWriterWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    desk_.emplace();
    desk_->Start();
    Desk::Press("Main", "Command1");
  }

  void repaintsWhatARunShows() {
    Load(QStringLiteral(SOURCE_FOLDER "/samples/vsk830/thermostat.hex"));
    Press("Option4");
    RepaintCounter repaints;
    ByName<QLabel>("Form1", "Label3")->installEventFilter(&repaints);
    Press("Command4");
    QCOMPARE(repaints.count, 15);  // blank, 0 to 100 percent, finish, programmed, result
    QCOMPARE(Text("Label3"), QStringLiteral("Write Ok"));
    QVERIFY(ByName<QAbstractButton>("Form1", "Option5")->isChecked());
  }

  void whatIsShownIsToldToAScreenReader() {
    static QList<QObject*> announced;
    auto* platform = QGuiApplicationPrivate::platformIntegration()->accessibility();
    platform->setActive(true);
    const auto before = QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
      if (event->type() == QAccessible::NameChanged || event->type() == QAccessible::ValueChanged) {
        announced << event->object();
      }
    });
    Press("Option7");
    struct Row {
      simulator::ConnectedChip chip;
      const char *press, *label, *text, *description;
    };
    using simulator::ConnectedChip;
    for (const Row& row :
         {Row{ConnectedChip::None, "Option4", "Label2", "isp mode is no exist",
              "Isp Mode Status, in red"},
          Row{ConnectedChip::Vsk830, "Option4", "Label2", "isp mode is exist", "Isp Mode Status"},
          Row{ConnectedChip::Vsk830, "Command4", "Label3", "Blank ok", "Isp Operate Status"}}) {
      announced.clear();
      if (row.chip != desk_->board.Connected()) desk_->board.Connect(row.chip);
      Press(row.press);
      auto* label = ByName<QLabel>("Form1", row.label);
      const bool red = QLatin1String(row.description).endsWith(QLatin1String("red"));
      QCOMPARE(label->palette().color(QPalette::WindowText), QColor(red ? 255 : 0, 0, 0));
      QCOMPARE(Told(label, QAccessible::Name), QLatin1String(row.text));
      QCOMPARE(Told(label, QAccessible::Description), QLatin1String(row.description));
      QVERIFY(announced.contains(label));
    }
    Load(QStringLiteral(SOURCE_FOLDER "/samples/vsk830/thermostat.hex"));
    for (const char* box : {"Text2", "Text3", "Text4", "Text5", "Text6"}) {
      auto* control = ByName<QLineEdit>("Form1", box);
      QVERIFY2(announced.contains(control), box);
      QCOMPARE(Told(control, QAccessible::Value), control->text());
    }
    QAccessible::installUpdateHandler(before);
    platform->setActive(false);
  }

  void boxesShowTheirBeginningAndTheFileBoxItsEnd() {
    Desk::Press("Main", "Command2");
    std::string name(120, 'f');
    name += ".B00";
    Load(QString::fromStdString(desk_->folder.Write(name, std::string(0x2000, '1'))));
    const auto* maximum = ByName<QLineEdit>("Form1", "Text4");
    QCOMPARE(maximum->text(), QStringLiteral("1FFF  FFFFFFFF"));
    QCOMPARE(maximum->cursorPosition(), 0);
    QCOMPARE(maximum->toolTip(), maximum->text());
    const auto* file = ByName<QLineEdit>("Form1", "Text2");
    QCOMPARE(file->cursorPosition(), file->text().size());
    QCOMPARE(file->toolTip(), file->text());
    QCOMPARE(ByName<QLineEdit>("Form1", "Text3")->toolTip(), QString());
  }

  void tabAndArrowKeysInTheOptionGroups() {
    Desk::Activate("Form1");
    const auto next = [](const char* from) {
      ByName<QWidget>("Form1", from)->setFocus();
      QTest::keyClick(ByName<QWidget>("Form1", from), Qt::Key_Tab);
      return QApplication::focusWidget()->objectName();
    };
    QCOMPARE(next("Command1"), QStringLiteral("Option8"));
    QCOMPARE(next("Option8"), QStringLiteral("Option1"));
    QTest::keyClick(ByName<QWidget>("Form1", "Option1"), Qt::Key_Down);
    QCOMPARE(desk_->tool.isp.ChipSelect, VskChip::Vsk630);
    QCOMPARE(next("Option8"), QStringLiteral("Option2"));
    Press("Option4");
    desk_->log.Clear();
    QTest::keyClick(ByName<QWidget>("Form1", "Option4"), Qt::Key_Down);
    QCOMPARE(desk_->log.Lines().size(), std::size_t{1});  // one quit frame for one key
    QCOMPARE(Text("Label2"), QStringLiteral("isp mode is out"));
  }

  void aQuitThatFailsDeselectsItsOption() {
    Press("Option4");
    desk_->board.faults.sdaStuckLow = true;
    Press("Option5");
    QCOMPARE(Text("Label2"), QStringLiteral("isp mode is not out"));
    QVERIFY(!ByName<QAbstractButton>("Form1", "Option5")->isChecked());
    QVERIFY(!ByName<QAbstractButton>("Form1", "Option4")->isChecked());
  }

  void optionsChooseWhatRunDoesAndTheCloseBoxKeepsTheState() {
    const char* options[] = {"Option6", "Option7", "Option8", "Option9", "Option10"};
    for (int i = 0; i < 5; ++i) {
      Press(options[i]);
      QCOMPARE(static_cast<int>(desk_->tool.vskWriter.IspOperate), i + 1);
    }
    Press("Option4");
    desk_->log.Clear();
    ShownWindow("Form1")->close();
    QVERIFY(desk_->log.Lines().empty());
    QVERIFY(desk_->tool.isp.IspModeOn);
    Desk::Press("Main", "Command1");
    QVERIFY(ByName<QAbstractButton>("Form1", "Option8")->isChecked());
    QCOMPARE(desk_->tool.vskWriter.IspOperate, IspOperation::PageLoad);  // outlives the window
  }

  void pagesThroughTheImage() {
    desk_->tool.vskImages.CodeLoaded = true;
    Press("Option4");
    Press("Option10");
    AnswerInput(QStringLiteral("10"));
    Press("Command4");
    QVERIFY(Text("Text1").startsWith(QStringLiteral("this is 10  page (Load Hex")));
    auto* display = ByName<QPlainTextEdit>("Form1", "Text1");
    QCOMPARE(display->document()->blockCount(), 17);
    QCOMPARE(display->verticalScrollBar()->maximum(), 0);
    QCOMPARE(display->horizontalScrollBar()->maximum(), 0);
    QCOMPARE(Told(display, QAccessible::Value), Text("Text1"));
    QTest::keyClick(display, Qt::Key_PageDown);
    QVERIFY(Text("Text1").startsWith(QStringLiteral("this is 11  page")));
    QTest::keyClick(display, Qt::Key_PageUp);
    QVERIFY(Text("Text1").startsWith(QStringLiteral("this is 10  page")));
  }

  void menuShortcutsWinOverTheTextBoxes() {
    auto* file = ByName<QLineEdit>("Form1", "Text2");
    Press("Option4");
    Desk::Activate("Form1");
    file->setFocus();
    QTest::keyClick(file, Qt::Key_B, Qt::ControlModifier);
    QCOMPARE(Text("Label3"), QStringLiteral("Blank ok"));
    QVERIFY(ByName<QAbstractButton>("Form1", "Option8")->isChecked());
    QCOMPARE(desk_->tool.vskWriter.IspOperate, IspOperation::EraseAll);
    QTest::keyClick(file, Qt::Key_A, Qt::ControlModifier);
    QVERIFY(ShownWindow("Form2") != nullptr);
    ShownWindow("Form2")->close();
    Desk::Activate("Form1");
    desk_->log.Clear();
    QTest::keyClick(ByName<QPlainTextEdit>("Form1", "Text1"), Qt::Key_X, Qt::ControlModifier);
    QVERIFY(ShownWindow("Form1") == nullptr);
    QCOMPARE(desk_->log.Lines().front(), std::string("S 96 48 00- P"));
    QVERIFY(!desk_->tool.isp.IspModeOn);
  }

  void aRefusedFileIsSaidAndWrongStartCodesArePrinted() {
    const std::string record = ":03000000010203F7\r\n";
    Load(QString::fromStdString(desk_->folder.Write("a.hex", "!" + record.substr(1) + record)));
    auto* surface = static_cast<PrintSurface*>(
        static_cast<QMainWindow*>(ShownWindow("Form1"))->centralWidget());
    QCOMPARE(surface->PrintedLines(), QStringList{QStringLiteral("error!!!")});
    QCOMPARE(Told(surface, QAccessible::Name), QStringLiteral("error!!!"));

    const QString before = Text("Text2");
    const QString broken = QString::fromStdString(desk_->folder.Write("b.hex", "no hex file\n"));
    QString said, reason;
    ConfirmMessage(said, &reason);
    Load(broken);
    QCOMPARE(said, QStringLiteral("path or file name error!!!"));
    QVERIFY(reason.contains(QStringLiteral("line 1, column 1")));
    QCOMPARE(Text("Text2"), before);
  }

 private:
  static void Press(const char* button) { Desk::Press("Form1", button); }
  static QString Text(const char* control) { return ShownText("Form1", control); }
  static void Load(const QString& file) {
    ChooseFile(file);
    Press("Command1");
  }

  std::optional<Desk> desk_;
};

QTEST_MAIN(VskWriterWindowTest)
#include "vsk_writer_window_test.moc"
