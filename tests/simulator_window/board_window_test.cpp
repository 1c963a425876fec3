// The "Simulated board" window: where it opens, what its controls do to the board, and what it
// shows of the flash.
#include "simulator_window/board_window.h"

#include <sys/resource.h>

#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>
#include <csignal>

#include "bus/i2c_master.h"
#include "session/by_name.h"
#include "support/board_rig.h"
#include "support/run_window_test.h"
#include "support/temp_folder.h"
#include "widgets/application_style.h"

using namespace simulator;

class BoardWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));  // has digits of its own
    ApplyApplicationStyle();
  }
  void init() {
    window_.reset();
    rig_ = std::make_unique<BoardRig>(CableWiring(), VskIdentity{}, ConnectedChip::Vsk830);
    window_ = std::make_unique<BoardWindow>(rig_->board);
    window_->show();
  }

  void opensInsideTheScreenBesideTheLauncher() {
    // 1280 x 720 at a scale of 1.5, with a launcher of 224 pixels and what a desktop takes away.
    const QSize room(853 - 224 - 40, 480 - 44);
    QCOMPARE(room.expandedTo(window_->minimumSizeHint()), room);
    for (const QPoint launcherAt : {QPoint(288, 250), QPoint(570, 500), QPoint(0, 0)}) {
      QWidget launcher;
      launcher.setFixedSize(200, 287);
      launcher.move(launcherAt);
      launcher.show();
      window_->resize(2000, 2000);
      window_->ShowBeside(launcher);
      QVERIFY(window_->testAttribute(Qt::WA_ShowWithoutActivating));
      const QRect screen = launcher.screen()->availableGeometry();
      QVERIFY(screen.contains(window_->frameGeometry() | launcher.frameGeometry()));
      QVERIFY(window_->isVisible() && !window_->geometry().intersects(launcher.geometry()));
      window_->hide();
    }
  }

  void onASmallScreenItScrolls() {
    // 1366 x 768 at a scale of 2, beside a launcher of 224 pixels.
    const QSize room(683 - 16 - 224 - 24, 384 - 44);
    QCOMPARE(room.expandedTo(window_->minimumSizeHint()), room);
    window_->resize(room);
    auto* scroll = window_->findChild<QScrollArea*>();
    QVERIFY(scroll->verticalScrollBar()->isVisible() && scroll->horizontalScrollBar()->isVisible());
    QCOMPARE(scroll->focusPolicy(), Qt::NoFocus);
  }

  void closedItLeavesAButtonThatOpensItAgain() {
    window_->close();
    auto* reopen = qobject_cast<QPushButton*>(ShownWindow("ShowSimulatedBoard"));
    QVERIFY(reopen != nullptr && !window_->isVisible());
    reopen->close();
    QVERIFY(reopen->isVisible());
    reopen->click();
    QVERIFY(window_->isVisible() && !reopen->isVisible());
  }

  void offersEveryChip() {
    auto* chips = Find<QComboBox>("Chip");
    const auto named = QAccessible::queryAccessibleInterface(chips)->relations(QAccessible::Label);
    QCOMPARE(named.value(0).first->text(QAccessible::Name), QStringLiteral("Connected chip"));
    QCOMPARE(static_cast<std::size_t>(chips->count()), kVskDataSheets.size() + 2);
    for (const VskDataSheet& sheet : kVskDataSheets) {
      chips->setCurrentText(QLatin1String(sheet.name));
      QVERIFY(rig_->board.Connected() == sheet.chip);
      QCOMPARE(Find<QTabWidget>("Flash")->count(), sheet.banks);
      QCOMPARE(Find<QSpinBox>("of bank")->isEnabled(), sheet.banks > 1);
    }
    chips->setCurrentText(QStringLiteral("RTD2120"));
    QCOMPARE(Find<QTabWidget>("Flash")->tabText(0), QStringLiteral("Flash bank 1"));
    Find<QSpinBox>("of bank")->setValue(2);
    Tick("BitFlipped")->setChecked(true);
    QCOMPARE(rig_->board.faults.flippedBit->bank, 1);
    chips->setCurrentText(QStringLiteral("VSK630"));
    Find<QSpinBox>("of bank")->setValue(1);
    chips->setCurrentText(QStringLiteral("RTD2120"));  // whose banks are counted from 1
    QCOMPARE(Find<QSpinBox>("of bank")->value(), 1);
    QCOMPARE(rig_->board.faults.flippedBit->bank, 0);
    chips->setCurrentText(QStringLiteral("nothing"));
    for (const char* idle : {"Unplugged", "ByteRefused", "BitFlipped", "BusyForEver"}) {
      QVERIFY2(!Tick(idle)->isEnabled(), idle);
    }
    QVERIFY(Tick("SdaStuckLow")->isEnabled() && !Find<QPushButton>("PowerCycle")->isEnabled());
  }

  void numbersChangedWhileAFaultIsOnTakeEffect() {
    Faults& faults = rig_->board.faults;
    Tick("BitFlipped")->setChecked(true);
    Find<QSpinBox>("bit")->setValue(5);
    Find<QSpinBox>("address (hex)")->setValue(0xABC);
    QVERIFY(faults.flippedBit == (Faults::FlippedBit{0, 0xABC, 5}));
    Tick("ByteRefused")->setChecked(true);
    Find<QSpinBox>("of the next frame number")->setValue(3);
    QCOMPARE(faults.refusedByte->frame, std::uint64_t{3});
    Tick("Unplugged")->setChecked(true);
    QCOMPARE(faults.unpluggedAfterFrame, std::uint64_t{0});
    Find<QSpinBox>("after so many more frames")->setValue(7);
    QCOMPARE(faults.unpluggedAfterFrame, std::uint64_t{7});
    QCOMPARE(Find<QSpinBox>("bit")->text(), QStringLiteral("5"));
  }

  void aSpentFaultAndAPowerCycleUntickFaults() {
    const Faults& faults = rig_->board.faults;
    for (const char* name : {"ByteRefused", "BusyForEver", "SdaStuckLow"}) Tick(name)->click();
    window_->Refresh();
    QVERIFY(faults.busyForEver && faults.sdaStuckLow && Tick("ByteRefused")->isChecked());
    Find<QPushButton>("PowerCycle")->click();
    QVERIFY(!Tick("BusyForEver")->isChecked() && !Tick("SdaStuckLow")->isChecked());
    Frame({0x94});
    window_->Refresh();
    QVERIFY(!Tick("ByteRefused")->isChecked() && faults == Faults{});
    // What changes by itself is said as it is shown.
    const auto name = [this](const char* label) {
      return QAccessible::queryAccessibleInterface(Find<QLabel>(label))->text(QAccessible::Name);
    };
    QCOMPARE(name("Traffic"), QStringLiteral("1 frames, 1 bytes, 1 of them refused"));
    QCOMPARE(name("IspMode"), QStringLiteral("no"));
  }

  void theFlashKeepsItsPlaceAndShowsWhatChanged() {
    Find<QSpinBox>("GoTo")->setValue(0xABC0);
    QCOMPARE(Find<QSpinBox>("GoTo")->text(), QStringLiteral("ABC0"));
    auto* cells = Find<QTableView>("Cells");
    QCOMPARE(cells->rowAt(0), 0xABC);
    QCOMPARE(cells->model()->headerData(0xABC, Qt::Vertical).toString(), QStringLiteral("ABC0"));

    Frame({0x5A, 0xA5});
    Frame({0x96, 0xA0, 0xAB});
    Frame({0x94, 0x00, 'H', 'i', 0x00});
    window_->Refresh();
    QCOMPARE(cells->rowAt(0), 0xABC);
    const auto shown = [cells](int row) {
      QString text;
      for (const int column : {0, 1, 2, 3, 16}) {
        const QModelIndex cell = cells->model()->index(row, column);
        text += cell.data().toString() + (cell.data(Qt::BackgroundRole).isValid() ? "! " : " ");
      }
      return text;
    };
    QCOMPARE(shown(0xAB0), QStringLiteral("48! 69! 00! FF Hi.............. "));

    Frame({0x96, 0xA0, 0xAC});
    Frame({0x94, 0x00, 0x7F});
    window_->Refresh();
    QCOMPARE(shown(0xAB0), QStringLiteral("48 69 00 FF Hi.............. "));
    QVERIFY(shown(0xAC0).startsWith(QStringLiteral("7F! FF ")));
  }

  void records() {
    auto* record = Find<QPushButton>("Record");
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"mouse", [record] { QTest::mouseClick(record, Qt::LeftButton); }},
        {"keyboard", [record] { QTest::keyClick(record, Qt::Key_Space); }},
        {"screen reader", [record] {
           auto* actions = QAccessible::queryAccessibleInterface(record)->actionInterface();
           actions->doAction(actions->actionNames().value(0));
           QTRY_VERIFY(!record->isDown());
         }}};
    for (const auto& [name, press] : ways) {
      const TempFolder folder;
      TakeFile(folder / "session");
      press();
      QVERIFY2(record->text().contains("Recording to session.vcd"), name);
      Frame({0x94});
      press();
      QVERIFY2(folder.Read("session.vcd").find("0d") != std::string::npos, name);
      QVERIFY2(record->text().startsWith("Record the bus"), name);
    }
  }

  void aRecordingThatCannotBeWrittenIsTold() {
    for (const auto& [target, reason] : {std::pair{"/nowhere/bus.vcd", "No such file or directory"},
                                         {"/dev/full", "No space left on device"}}) {
      const TempFolder folder;
      std::filesystem::create_symlink(target, folder / "bus.vcd");
      QString told;
      AnswerDialog<QMessageBox>([&told](QMessageBox& box) { Confirm(box, told); });
      PressRecord(folder / "bus.vcd");
      QVERIFY2(told.contains(QLatin1String(reason)), qPrintable(told));
      QVERIFY(Find<QPushButton>("Record")->text().startsWith("Record the bus"));
    }
  }

  void aDiskThatFillsUpEndsTheRecording() {
    const TempFolder folder;
    PressRecord(folder / "bus.vcd");
    std::signal(SIGXFSZ, SIG_IGN);  // the write fails instead
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{4096, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    QString told;
    AnswerDialog<QMessageBox>([&told](QMessageBox& box) { Confirm(box, told); });
    for (int i = 0; i < 99; ++i) Frame({0x94, 0x55, 0x55});
    window_->Refresh();
    setrlimit(RLIMIT_FSIZE, &before);
    QVERIFY2(told.contains("File too large"), qPrintable(told));
  }

 private:
  /// Agrees to replace a file, if asked; reads and confirms the message that follows.
  static void Confirm(QMessageBox& box, QString& told) {
    told = box.text() + box.informativeText();
    QAbstractButton* replace = box.button(QMessageBox::Yes);
    if (replace == nullptr) return box.accept();
    AnswerDialog<QMessageBox>([&told](QMessageBox& message) { Confirm(message, told); });
    replace->click();
  }

  QCheckBox* Tick(const char* fault) { return Find<QCheckBox>(fault); }
  template <typename Control>
  Control* Find(const char* name) {
    return ByName<Control>("SimulatedBoard", name);
  }

  /// Takes this file in the dialog that follows.
  static void TakeFile(const std::filesystem::path& path) {
    const QString file = QString::fromStdString(path.string());
    AnswerDialog<QFileDialog>([file](QFileDialog& dialog) { Choose(dialog, file); });
  }
  void PressRecord(const std::filesystem::path& path) {
    TakeFile(path);
    Find<QPushButton>("Record")->click();
  }
  void Frame(std::initializer_list<int> bytes) {
    tongxun::I2cMaster master(rig_->port, rig_->timing);
    master.I2cStart();
    for (const int byte : bytes) master.I2cWriteByte(byte);
    master.I2cStop();
  }

  std::unique_ptr<BoardRig> rig_;
  std::unique_ptr<BoardWindow> window_;
};

int simulator_window_board_window_test(int count, char** arguments) {
  return RunWindowTest<BoardWindowTest>(count, arguments);
}
#include "board_window_test.moc"
