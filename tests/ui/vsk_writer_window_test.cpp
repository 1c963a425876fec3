// The VSK writer window as an operator uses it, on the simulated board.
#include "ui/window_test.h"

using simulator::ConnectedChip;

/// Counts how often a control is painted while an operation holds the thread.
class RepaintCounter : public QObject {
 public:
  int count = 0;
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return false;
  }
};

class VskWriterWindowTest : public WindowTest {
  Q_OBJECT

 private slots:
  void init() { StartWriter("Command1", ConnectedChip::Vsk830); }

  void whatARunShowsIsPaintedAndItsResultSpokenOnce() {
    ScreenReader reader;
    desk_->board.Connect(ConnectedChip::None);
    kVskWriter.Press("Option4");
    QCOMPARE(reader.Spoken(), QStringLiteral("isp mode is no exist (Isp Mode Status, in red)"));
    const auto* shown = kVskWriter.Find("Label2");
    QCOMPARE(shown->palette().color(QPalette::WindowText), QColor(255, 0, 0));
    desk_->board.Connect(ConnectedChip::Vsk830);
    kVskWriter.Press("Option4");
    QCOMPARE(reader.Spoken(), QStringLiteral("isp mode is exist (Isp Mode Status)"));
    QCOMPARE(shown->palette().color(QPalette::WindowText), QColor(0, 0, 0));
    Load(QStringLiteral(SOURCE_FOLDER "/samples/vsk830/thermostat.hex"));
    QCOMPARE(reader.Spoken(), QString());
    RepaintCounter repaints;
    kVskWriter.Find("Label3")->installEventFilter(&repaints);
    kVskWriter.Press("Command4");
    QCOMPARE(repaints.count, 15);  // blank, 0 to 100 percent, finish, programmed, result
    QCOMPARE(reader.Spoken(), QStringLiteral("isp mode is out (Isp Mode Status); "
                                             "Write Ok (Isp Operate Status)"));
    QVERIFY(kVskWriter.IsOn("Option5"));
  }

  void boxesShowTheirBeginningAndTheFileBoxItsEnd() {
    kLauncher.Press("Command2");
    const std::string name = "<b>" + std::string(120, 'f') + ".B00";
    Load(QString::fromStdString(desk_->folder.Write(name, std::string(0x2000, '1'))));
    const auto* maximum = kVskWriter.Find<QLineEdit>("Text4");
    QCOMPARE(maximum->text(), QStringLiteral("1FFF  FFFFFFFF"));
    QCOMPARE(maximum->cursorPosition(), 0);
    QCOMPARE(maximum->toolTip(), maximum->text());
    const auto* file = kVskWriter.Find<QLineEdit>("Text2");
    QCOMPARE(file->cursorPosition(), file->text().size());
    const QString tip = file->toolTip();  // shown as rich text when it looks like it
    QVERIFY(Qt::mightBeRichText(tip));
    QCOMPARE(QTextDocumentFragment::fromHtml(tip).toPlainText(), file->text());
    QCOMPARE(kVskWriter.Find("Text3")->toolTip(), QString());
  }

  void theFileDialogOffersThePairsFilesAndTheProgramsFolder() {
    const QUrl folder =
        QUrl::fromLocalFile(QString::fromStdString((desk_->folder / "program").string()));
    QStringList filters;
    bool offered = false;
    AnswerDialog<QFileDialog>([&](QFileDialog& dialog) {
      filters = dialog.nameFilters();
      offered = dialog.sidebarUrls().contains(folder);
      dialog.reject();
    });
    kLauncher.Press("Command2");
    kVskWriter.Press("Command1");
    QCOMPARE(filters.join('|'), QStringLiteral("H00file (*.H00)|B00file (*.B00)"));
    QVERIFY(offered && !QFileDialog().sidebarUrls().contains(folder));  // other programs' too
  }

  void tabAndArrowKeysInTheOptionGroups() {
    kVskWriter.Activate();
    QCOMPARE(kVskWriter.Shown()->focusWidget(), kVskWriter.Find("Command1"));
    const auto next = [](const char* from) {
      kVskWriter.Find(from)->setFocus();
      QTest::keyClick(kVskWriter.Find(from), Qt::Key_Tab);
      return QApplication::focusWidget()->objectName();
    };
    QCOMPARE(next("Command1"), QStringLiteral("Option8"));
    QCOMPARE(next("Option8"), QStringLiteral("Option1"));
    QTest::keyClick(kVskWriter.Find("Option1"), Qt::Key_Down);
    QCOMPARE(desk_->tool.isp.ChipSelect, VskChip::Vsk630);
    QCOMPARE(next("Option8"), QStringLiteral("Option2"));
    kVskWriter.Press("Option4");
    desk_->log.Clear();
    QTest::keyClick(kVskWriter.Find("Option4"), Qt::Key_Down);
    QCOMPARE(desk_->log.Lines().size(), std::size_t{1});  // one quit frame for one key
    QCOMPARE(kVskWriter.Text("Label2"), QStringLiteral("isp mode is out"));
  }

  void aQuitThatFailsDeselectsItsOption() {
    kVskWriter.Press("Option4");
    desk_->board.faults.sdaStuckLow = true;
    kVskWriter.Press("Option5");
    QCOMPARE(kVskWriter.Text("Label2"), QStringLiteral("isp mode is not out"));
    QVERIFY(!kVskWriter.IsOn("Option5") && !kVskWriter.IsOn("Option4"));
    desk_->board.faults.sdaStuckLow = false;
    kVskWriter.Press("Option4");
    kVskWriter.Press("Option5");
    QVERIFY(kVskWriter.IsOn("Option5") && !kVskWriter.IsOn("Option4"));
  }

  void optionsChooseWhatRunDoesAndTheCloseBoxKeepsTheState() {
    for (int i = 1; i <= 5; ++i) {
      kVskWriter.Press(("Option" + std::to_string(5 + i)).c_str());
      QCOMPARE(static_cast<int>(desk_->tool.vskWriter.IspOperate), i);
    }
    kVskWriter.Press("Option4");
    desk_->log.Clear();
    kVskWriter.Shown()->close();
    QVERIFY(desk_->log.Lines().empty());
    QVERIFY(desk_->tool.isp.IspModeOn);
    kLauncher.Press("Command1");
    QVERIFY(kVskWriter.IsOn("Option8"));
    QCOMPARE(desk_->tool.vskWriter.IspOperate, RunChoice::PageLoad);  // outlives the window
  }

  void eraseOfARangeBeyondAsksAndCancelIsTheDefault() {
    kVskWriter.Press("Option4");
    kVskWriter.Press("Option6");
    desk_->log.Clear();
    QString asked;
    AnswerDialog<QInputDialog>([&asked](QInputDialog& start) {
      AnswerDialog<QInputDialog>([&asked](QInputDialog& end) {
        ConfirmMessage(asked);
        end.accept();
      });
      start.accept();
    });
    kVskWriter.Press("Command4");
    QCOMPARE(asked, QStringLiteral("only addresses 0000-7FFF can be page erased|"));
    QVERIFY(desk_->log.Lines().empty());
  }

  void pagesThroughTheImage() {
    desk_->tool.vskImages.CodeLoaded = true;
    kVskWriter.Press("Option4");
    kVskWriter.Press("Option10");
    AnswerDialog<QInputDialog>([](QInputDialog& box) {
      kVskWriter.Find<QAbstractButton>("Option5")->toggle();  // as a screen reader can
      box.setTextValue(QStringLiteral("10"));
      box.accept();
    });
    kVskWriter.Press("Command4");
    QVERIFY(desk_->tool.isp.IspModeOn);
    QVERIFY(kVskWriter.Text("Text1").startsWith(QStringLiteral("this is 10  page (Load Hex")));
    auto* display = kVskWriter.Find<QPlainTextEdit>("Text1");
    QCOMPARE(display->document()->blockCount(), 17);
    QCOMPARE(display->verticalScrollBar()->maximum(), 0);
    QCOMPARE(display->horizontalScrollBar()->maximum(), 0);
    for (const auto& [key, page] : {std::pair{Qt::Key_PageDown, 11}, {Qt::Key_PageUp, 10}}) {
      QTest::keyClick(display, key);
      QVERIFY(kVskWriter.Text("Text1").startsWith(QStringLiteral("this is %1  page").arg(page)));
    }
  }

  void menuShortcutsWinOverTheTextBoxes() {
    auto* file = kVskWriter.Find("Text2");
    kVskWriter.Press("Option4");
    kVskWriter.Activate();
    file->setFocus();
    QTest::keyClick(file, Qt::Key_B, Qt::ControlModifier);
    QCOMPARE(kVskWriter.Text("Label3"), QStringLiteral("Blank ok"));
    QVERIFY(kVskWriter.IsOn("Option8"));
    QCOMPARE(desk_->tool.vskWriter.IspOperate, RunChoice::EraseAll);
    QTest::keyClick(file, Qt::Key_A, Qt::ControlModifier);
    QVERIFY(kSettings.Shown() != nullptr);
    kSettings.Shown()->close();
    kVskWriter.Activate();
    desk_->log.Clear();
    QTest::keyClick(kVskWriter.Find("Text1"), Qt::Key_X, Qt::ControlModifier);
    QVERIFY(kVskWriter.Shown() == nullptr);
    QCOMPARE(desk_->log.Lines().front(), std::string("S 96 48 00- P"));
    QVERIFY(!desk_->tool.isp.IspModeOn);
  }

  /// An erase takes less time than the keyboard takes to send the key again.
  void aHeldKeyRunsOnce() {
    kVskWriter.Press("Option4");
    kVskWriter.Press("Option7");
    kVskWriter.Activate();
    std::vector<std::string> once;
    for (const auto& [key, modifiers] : {std::pair{Qt::Key_B, Qt::ControlModifier},
                                         {Qt::Key_Return, Qt::NoModifier},
                                         {Qt::Key_Enter, Qt::KeypadModifier},
                                         {Qt::Key_Space, Qt::NoModifier}}) {
      for (const auto& repeats :
           {std::vector<bool>{}, {true, true}, {false, false}, {true, false}}) {
        kVskWriter.Find("Command4")->setFocus();
        desk_->log.Clear();
        PressKey(kVskWriter.Shown(), key, modifiers);
        for (const bool told : repeats) RepeatKey(kVskWriter.Shown(), key, modifiers, told);
        QTest::lastMouseTimestamp += 40;
        SendKey(kVskWriter.Shown(), QEvent::KeyRelease, key, modifiers);
        if (once.empty()) once = desk_->log.Lines();
        QVERIFY(!once.empty());
        QCOMPARE(desk_->log.Lines(), once);
      }
    }
  }

  void aRefusedFileIsSaidAndWrongStartCodesArePrinted() {
    const std::string record = ":03000000010203F7\r\n";
    ScreenReader reader;
    Load(QString::fromStdString(desk_->folder.Write("a.hex", "!" + record.substr(1) + record)));
    auto* surface = static_cast<QMainWindow*>(kVskWriter.Shown())->centralWidget();
    QCOMPARE(Told(surface, QAccessible::Name), QStringLiteral("error!!!"));
    QCOMPARE(reader.Spoken(), QStringLiteral("error!!! ()"));
    auto* notes = qobject_cast<QMessageBox*>(ShownWindow("FileNotes"));
    QVERIFY(notes != nullptr && !notes->isModal());
    QVERIFY(notes->text().contains(QStringLiteral("earlier line stands: line 2.")));
    notes->close();
    QString said;
    ConfirmMessage(said);
    Load(QString::fromStdString(desk_->folder.Write("b.hex", "no hex file\n")));
    QVERIFY(said.startsWith(QStringLiteral("path or file name error!!!|")));
    QVERIFY(said.contains(QStringLiteral("line 1, column 1")));
  }

  void aDroppedFileIsTakenByTheNamesThatTheDialogShows() {
    const std::pair<const char*, const char*> rows[] = {
        {"a.HEX", "Option1"},   {"\u00E9.bin", "Option1"}, {"a.h00", "Option2"},
        {"x.y.B00", "Option2"}, {"a.ihx", "neither"},      {"a.H01", "neither"},
        {"hex", "neither"},     {"a.hex~", "neither"},     {"", "neither"}};
    for (const auto& [name, takenBy] : rows) {
      QMimeData data;
      data.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/") + QString::fromUtf8(name))});
      for (const char* chip : {"Option1", "Option2"}) {
        kVskWriter.Press(chip);
        QDragEnterEvent event({9, 99}, Qt::CopyAction, &data, Qt::LeftButton, {});
        static_cast<QObject*>(kVskWriter.Shown())->event(&event);
        const bool taken = std::string_view(chip) == takenBy;
        QVERIFY2(event.isAccepted() == taken, name);
      }
    }
  }

 private:
  static void Load(const QString& file) {
    ChooseFile(file);
    kVskWriter.Press("Command1");
  }
};

int ui_vsk_writer_window_test(int count, char** arguments) {
  return RunWindowTest<VskWriterWindowTest>(count, arguments);
}
#include "vsk_writer_window_test.moc"
