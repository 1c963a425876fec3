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
    desk_ = std::make_unique<Desk>();
    desk_->Start();
    Desk::Press("Main", "Command1");
  }
  void cleanup() { desk_.reset(); }

  void programsTheSampleImage() {
    const QString image = QStringLiteral(SOURCE_FOLDER "/samples/vsk830/thermostat.hex");
    ChooseFile(image);
    Desk::Press("Form1", "Command1");
    QCOMPARE(ShownText("Form1", "Text2"), image);
    QCOMPARE(ShownText("Form1", "Text4"),
             QString::fromStdString(HexText(desk_->tool.vskImages.CodeMax)));
    Desk::Press("Form1", "Option4");
    QCOMPARE(ShownText("Form1", "Label2"), QStringLiteral("isp mode is exist"));
    RepaintCounter repaints;
    ByName<QLabel>("Form1", "Label3")->installEventFilter(&repaints);
    Desk::Press("Form1", "Command4");
    QCOMPARE(repaints.count, 15);  // blank, 0 to 100 percent, finish, programmed, result
    QCOMPARE(ShownText("Form1", "Label3"), QStringLiteral("Write Ok"));
    QCOMPARE(ShownText("Form1", "Label2"), QStringLiteral("isp mode is out"));
    QCOMPARE(ShownText("Form1", "Text6"), ShownText("Form1", "Text5"));
    QVERIFY(ByName<QAbstractButton>("Form1", "Option5")->isChecked());
    const auto& images = desk_->tool.vskImages;
    QVERIFY(std::equal(images.CodeBuffer.begin(), images.CodeBuffer.begin() + images.CodeMax + 1,
                       desk_->board.vsk830.Bank(0).Cells().begin()));
  }

  void programsTheSamplePairIntoAVsk630() {
    desk_->board.Connect(simulator::ConnectedChip::Vsk630);
    Desk::Press("Main", "Command2");
    ChooseFile(QStringLiteral(SOURCE_FOLDER "/samples/vsk630/kiosk.H00"));
    ByName<QAction>("Form1", "Lnf")->trigger();
    Desk::Press("Form1", "Option4");
    Desk::Press("Form1", "Command4");
    QCOMPARE(ShownText("Form1", "Label3"), QStringLiteral("Write Ok"));
    QCOMPARE(ShownText("Form1", "Text6"), ShownText("Form1", "Text5"));
    const auto& images = desk_->tool.vskImages;
    QVERIFY(images.CodeBank1Max > 256);
    QVERIFY(std::equal(images.CodeBank1.begin(), images.CodeBank1.begin() + images.CodeBank1Max + 1,
                       desk_->board.vsk630.Bank(1).Cells().begin()));
  }

  void entersIspModeAnewByTheKeyboardAndByASecondClick() {
    desk_->board.Connect(simulator::ConnectedChip::None);
    Desk::Press("Form1", "Option4");
    QCOMPARE(ShownText("Form1", "Label2"), QStringLiteral("isp mode is no exist"));
    QCOMPARE(Colour("Label2"), QColor(255, 0, 0));
    desk_->board.Connect(simulator::ConnectedChip::Vsk830);
    Desk::Press("Form1", "Option4");
    QCOMPARE(ShownText("Form1", "Label2"), QStringLiteral("isp mode is exist"));
    QCOMPARE(Colour("Label2"), QColor(0, 0, 0));
    desk_->log.Clear();
    Activate();
    ByName<QWidget>("Form1", "Option4")->setFocus();
    QTest::keyClick(ByName<QWidget>("Form1", "Option4"), Qt::Key_Down);
    QCOMPARE(desk_->log.Lines().size(), std::size_t{1});  // one quit frame for one key
    QCOMPARE(ShownText("Form1", "Label2"), QStringLiteral("isp mode is out"));
  }

  void statusTextsAreToldToAScreenReader() {
    static QList<QObject*> announced;
    auto* platform = QGuiApplicationPrivate::platformIntegration()->accessibility();
    platform->setActive(true);
    const auto before = QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
      if (event->type() == QAccessible::NameChanged || event->type() == QAccessible::ValueChanged) {
        announced << event->object();
      }
    });
    desk_->board.Connect(simulator::ConnectedChip::None);
    auto* status = ByName<QLabel>("Form1", "Label2");
    Desk::Press("Form1", "Option4");
    QCOMPARE(Told(status, QAccessible::Name), QStringLiteral("isp mode is no exist"));
    QCOMPARE(Told(status, QAccessible::Description), QStringLiteral("Isp Mode Status, in red"));
    QVERIFY(announced.contains(status));
    desk_->board.Connect(simulator::ConnectedChip::Vsk830);
    Desk::Press("Form1", "Option4");
    QCOMPARE(Told(status, QAccessible::Name), QStringLiteral("isp mode is exist"));
    QCOMPARE(Told(status, QAccessible::Description), QStringLiteral("Isp Mode Status"));
    Desk::Press("Form1", "Option7");
    Desk::Press("Form1", "Command4");
    auto* operation = ByName<QLabel>("Form1", "Label3");
    QCOMPARE(Told(operation, QAccessible::Name), QStringLiteral("Blank ok"));
    QCOMPARE(Told(operation, QAccessible::Description), QStringLiteral("Isp Operate Status"));
    QVERIFY(announced.contains(operation));
    announced.clear();
    ChooseFile(QStringLiteral(SOURCE_FOLDER "/samples/vsk830/thermostat.hex"));
    Desk::Press("Form1", "Command1");
    for (const char* box : {"Text2", "Text3", "Text4", "Text5", "Text6"}) {
      auto* control = ByName<QLineEdit>("Form1", box);
      QVERIFY2(announced.contains(control), box);
      QCOMPARE(Told(control, QAccessible::Value), control->text());
    }
    QAccessible::installUpdateHandler(before);
    platform->setActive(false);
  }

  void boxesShowTheirBeginningAndTheFileBoxItsEnd() {
    desk_->board.Connect(simulator::ConnectedChip::Vsk630);
    Desk::Press("Main", "Command2");
    std::string name(120, 'f');
    name += ".B00";
    ChooseFile(QString::fromStdString(desk_->folder.Write(name, std::string(0x2000, '1'))));
    Desk::Press("Form1", "Command1");
    const auto* maximum = ByName<QLineEdit>("Form1", "Text4");
    QCOMPARE(maximum->text(), QStringLiteral("1FFF  FFFFFFFF"));
    QCOMPARE(maximum->cursorPosition(), 0);
    QCOMPARE(maximum->toolTip(), maximum->text());
    const auto* file = ByName<QLineEdit>("Form1", "Text2");
    QCOMPARE(file->cursorPosition(), file->text().size());
    QCOMPARE(file->toolTip(), file->text());
    QCOMPARE(ByName<QLineEdit>("Form1", "Text3")->toolTip(), QString());
  }

  void tabEntersAnOptionGroupAtItsSelectedOption() {
    Activate();
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
  }

  void aQuitThatFailsDeselectsItsOption() {
    Desk::Press("Form1", "Option4");
    desk_->board.faults.sdaStuckLow = true;
    Desk::Press("Form1", "Option5");
    QCOMPARE(ShownText("Form1", "Label2"), QStringLiteral("isp mode is not out"));
    QVERIFY(!ByName<QAbstractButton>("Form1", "Option5")->isChecked());
    QVERIFY(!ByName<QAbstractButton>("Form1", "Option4")->isChecked());
  }

  void optionsChooseWhatRunDoes() {
    const char* options[] = {"Option6", "Option7", "Option8", "Option9", "Option10"};
    for (int i = 0; i < 5; ++i) {
      Desk::Press("Form1", options[i]);
      QCOMPARE(static_cast<int>(desk_->tool.vskWriter.IspOperate), i + 1);
    }
    ShownWindow("Form1")->close();
    Desk::Press("Main", "Command1");
    QVERIFY(ByName<QAbstractButton>("Form1", "Option8")->isChecked());
    QCOMPARE(desk_->tool.vskWriter.IspOperate, IspOperation::PageLoad);  // outlives the window
  }

  void pagesThroughTheImage() {
    desk_->tool.vskImages.CodeLoaded = true;
    Desk::Press("Form1", "Option4");
    Desk::Press("Form1", "Option10");
    AnswerInput(QStringLiteral("10"));
    Desk::Press("Form1", "Command4");
    QVERIFY(ShownText("Form1", "Text1").startsWith(QStringLiteral("this is 10  page (Load Hex")));
    auto* display = ByName<QPlainTextEdit>("Form1", "Text1");
    QCOMPARE(display->document()->blockCount(), 17);
    QCOMPARE(display->verticalScrollBar()->maximum(), 0);
    QCOMPARE(display->horizontalScrollBar()->maximum(), 0);
    QCOMPARE(Told(display, QAccessible::Value), ShownText("Form1", "Text1"));
    QTest::keyClick(display, Qt::Key_PageDown);
    QVERIFY(ShownText("Form1", "Text1").startsWith(QStringLiteral("this is 11  page")));
    QTest::keyClick(display, Qt::Key_PageUp);
    QVERIFY(ShownText("Form1", "Text1").startsWith(QStringLiteral("this is 10  page")));
  }

  void menuShortcutsWinOverTheTextBoxes() {
    auto* file = ByName<QLineEdit>("Form1", "Text2");
    Desk::Press("Form1", "Option4");
    Activate();
    file->setFocus();
    QTest::keyClick(file, Qt::Key_B, Qt::ControlModifier);
    QCOMPARE(ShownText("Form1", "Label3"), QStringLiteral("Blank ok"));
    QVERIFY(ByName<QAbstractButton>("Form1", "Option8")->isChecked());
    QCOMPARE(desk_->tool.vskWriter.IspOperate, IspOperation::EraseAll);
    QTest::keyClick(file, Qt::Key_A, Qt::ControlModifier);
    QVERIFY(ShownWindow("Form2") != nullptr);
    ShownWindow("Form2")->close();
    Activate();
    desk_->log.Clear();
    QTest::keyClick(ByName<QPlainTextEdit>("Form1", "Text1"), Qt::Key_X, Qt::ControlModifier);
    QVERIFY(ShownWindow("Form1") == nullptr);
    QCOMPARE(desk_->log.Lines().front(), std::string("S 96 48 00- P"));
    QVERIFY(!desk_->tool.isp.IspModeOn);
  }

  void theCloseBoxSendsNothingAndKeepsIspMode() {
    Desk::Press("Form1", "Option4");
    desk_->log.Clear();
    ShownWindow("Form1")->close();
    QVERIFY(desk_->log.Lines().empty());
    QVERIFY(desk_->tool.isp.IspModeOn);
  }

  void aRefusedFileIsSaidAndWrongStartCodesArePrinted() {
    const std::string record = ":03000000010203F7\r\n";
    ChooseFile(
        QString::fromStdString(desk_->folder.Write("a.hex", "!" + record.substr(1) + record)));
    Desk::Press("Form1", "Command1");
    auto* surface = static_cast<PrintSurface*>(
        static_cast<QMainWindow*>(ShownWindow("Form1"))->centralWidget());
    QCOMPARE(surface->PrintedLines(), QStringList{QStringLiteral("error!!!")});
    QCOMPARE(Told(surface, QAccessible::Name), QStringLiteral("error!!!"));

    const QString before = ShownText("Form1", "Text2");
    const QString broken = QString::fromStdString(desk_->folder.Write("b.hex", "no hex file\n"));
    QString said, reason;
    ChooseFile(broken);
    AnswerDialog<QMessageBox>([&](QMessageBox& box) {
      said = box.text();
      reason = box.informativeText();
      box.accept();
    });
    Desk::Press("Form1", "Command1");
    QCOMPARE(said, QStringLiteral("path or file name error!!!"));
    QVERIFY(reason.contains(QStringLiteral("line 1, column 1")));
    QCOMPARE(ShownText("Form1", "Text2"), before);
  }

 private:
  static void Activate() {
    ShownWindow("Form1")->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(ShownWindow("Form1")));
  }
  static QColor Colour(const char* label) {
    return ByName<QLabel>("Form1", label)->palette().color(QPalette::WindowText);
  }
  std::unique_ptr<Desk> desk_;
};

QTEST_MAIN(VskWriterWindowTest)
#include "vsk_writer_window_test.moc"
