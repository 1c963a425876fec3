// The "Simulated board" window: where it opens, what its controls do to the board, and what it
// shows of the flash.
#include "simulator_window/board_window.h"

// Precompiled, each as a whole.
#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

#include "bus/i2c_master.h"
#include "support/board_bench.h"
#include "support/temp_folder.h"
#include "widgets/by_name.h"
#include "widgets/controls.h"

using namespace simulator;

class BoardWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { ApplyApplicationStyle(); }
  void init() {
    window_.reset();
    bench_ = std::make_unique<BoardBench>(CableWiring(), VskIdentity{}, ConnectedChip::Vsk830);
    board_ = &bench_->board;
    master_.emplace(bench_->port, bench_->timing);
    window_ = std::make_unique<BoardWindow>(*board_);
  }

  /// 1280 x 720 at a scale of 1.5, with a launcher of 224 pixels and what a desktop takes away.
  void fitsASmallScreen() {
    const QSize least = window_->minimumSizeHint();
    QVERIFY2(least.width() <= 853 - 224 - 40, qPrintable(QString::number(least.width())));
    QVERIFY2(least.height() <= 480 - 44, qPrintable(QString::number(least.height())));
  }

  void opensInsideTheScreenBesideTheLauncher() {
    for (const QPoint launcherAt : {QPoint(288, 250), QPoint(570, 500), QPoint(0, 0)}) {
      QWidget launcher;
      launcher.setFixedSize(200, 287);
      launcher.move(launcherAt);
      launcher.show();
      window_->resize(2000, 2000);
      window_->ShowBeside(launcher);
      QVERIFY(QTest::qWaitForWindowActive(&launcher));
      QVERIFY(window_->isVisible());
      const QRect screen = launcher.screen()->availableGeometry();
      QVERIFY(screen.contains(window_->frameGeometry() | launcher.frameGeometry()));
      QVERIFY(!window_->geometry().intersects(launcher.geometry()));
      window_->hide();
    }
  }

  void closedItLeavesAButtonThatOpensItAgain() {
    window_->show();
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
    QCOMPARE(static_cast<std::size_t>(chips->count()), kVskModels.size() + 2);
    for (const VskModel& model : kVskModels) {
      chips->setCurrentText(QLatin1String(model.name));
      QVERIFY(board_->Connected() == model.chip);
      QCOMPARE(Find<QTabWidget>("Flash")->count(), model.banks);
      QCOMPARE(Find<QSpinBox>("of bank")->isEnabled(), model.banks > 1);
    }
    chips->setCurrentText(QStringLiteral("nothing"));
    for (const char* idle : {"Unplugged", "ByteRefused", "BitFlipped", "BusyForEver"}) {
      QVERIFY2(!Tick(idle)->isEnabled(), idle);
    }
    QVERIFY(Tick("SdaStuckLow")->isEnabled() && !Find<QPushButton>("PowerCycle")->isEnabled());
  }

  void numbersChangedWhileAFaultIsOnTakeEffect() {
    Faults& faults = board_->faults;
    Tick("BitFlipped")->setChecked(true);
    Find<QSpinBox>("bit")->setValue(5);
    Find<QSpinBox>("address (hex)")->setValue(0xABC);
    QCOMPARE(faults.flippedBit->address, 0xABCU);
    QCOMPARE(faults.flippedBit->bit, 5);
    Tick("ByteRefused")->setChecked(true);
    Find<QSpinBox>("of the next frame number")->setValue(3);
    QCOMPARE(faults.refusedByte->frame, std::uint64_t{3});
    Tick("Unplugged")->setChecked(true);
    QCOMPARE(faults.unpluggedAfterFrame, std::uint64_t{0});
    Find<QSpinBox>("after so many more frames")->setValue(7);
    QCOMPARE(faults.unpluggedAfterFrame, std::uint64_t{7});
  }

  void aSpentFaultAndAPowerCycleUntickFaults() {
    for (const char* fault : {"ByteRefused", "BusyForEver", "SdaStuckLow"}) {
      Tick(fault)->setChecked(true);
    }
    window_->Refresh();
    QVERIFY(Tick("ByteRefused")->isChecked());
    QVERIFY(board_->faults.busyForEver && board_->faults.sdaStuckLow);
    Find<QPushButton>("PowerCycle")->click();
    QVERIFY(!Tick("BusyForEver")->isChecked() && !Tick("SdaStuckLow")->isChecked());
    Frame({0x94});
    window_->Refresh();
    QVERIFY(!Tick("ByteRefused")->isChecked());
    QVERIFY(board_->faults == Faults{});
  }

  void theFlashKeepsItsPlaceAndShowsWhatChanged() {
    window_->show();
    Find<QSpinBox>("GoTo")->setValue(0xABC0);
    QCOMPARE(Find<QSpinBox>("GoTo")->text(), QStringLiteral("ABC0"));
    auto* cells = Find<QTableView>("Cells");
    const QAbstractItemModel* model = cells->model();
    const int top = cells->rowAt(0);
    QCOMPARE(model->headerData(top, Qt::Vertical).toString(), QStringLiteral("ABC0"));

    Frame({0x5A, 0xA5});
    Frame({0x96, 0xA0, 0xAB});
    Frame({0x94, 0x00, 'H', 'i', 0x00});
    window_->Refresh();
    QCOMPARE(cells->rowAt(0), top);
    const auto text = [model](int row, int column) {
      return model->index(row, column).data().toString();
    };
    const auto changed = [model](int row, int column) {
      return model->index(row, column).data(Qt::BackgroundRole).isValid();
    };
    QCOMPARE(text(0xAB0, 1), QStringLiteral("69"));
    QCOMPARE(text(0xAB0, 16), QStringLiteral("Hi.............."));
    QVERIFY(changed(0xAB0, 2) && !changed(0xAB0, 3));

    Frame({0x96, 0xA0, 0xAC});
    Frame({0x94, 0x00, 0x7F});
    window_->Refresh();
    QVERIFY(changed(0xAC0, 0) && !changed(0xAB0, 2));
  }

  void liveLabelsAreReadAsTheyAreShown() {
    Frame({0x94});
    window_->Refresh();
    const auto name = [this](const char* label) {
      return QAccessible::queryAccessibleInterface(Find<QLabel>(label))->text(QAccessible::Name);
    };
    QCOMPARE(name("Traffic"), QStringLiteral("1 frames, 1 bytes, 1 of them refused"));
    QCOMPARE(name("IspMode"), QStringLiteral("no"));
  }

  void records() {
    const TempFolder folder;
    auto* record = Find<QPushButton>("Record");
    PressRecord(folder / "session");
    QVERIFY(record->isChecked());
    QVERIFY(record->text().contains(QStringLiteral("Recording to session.vcd")));
    Frame({0x94});
    record->click();
    QVERIFY(!record->isChecked());
    QVERIFY(folder.Read("session.vcd").find("0d") != std::string::npos);
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
      QVERIFY(!Find<QPushButton>("Record")->isChecked());
    }
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
    auto* control = window_->findChild<Control*>(QLatin1String(name));
    if (control == nullptr) qFatal("no control %s", name);
    return control;
  }

  /// Takes this file in the dialog that follows.
  void PressRecord(const std::filesystem::path& path) {
    const QString file = QString::fromStdString(path.string());
    AnswerDialog<QFileDialog>([file](QFileDialog& dialog) { Choose(dialog, file); });
    Find<QPushButton>("Record")->click();
  }
  void Frame(std::initializer_list<int> bytes) {
    master_->I2cStart();
    for (const int byte : bytes) master_->I2cWriteByte(byte);
    master_->I2cStop();
  }

  std::unique_ptr<BoardBench> bench_;
  std::optional<tongxun::I2cMaster> master_;
  SimulatedBoard* board_ = nullptr;
  std::unique_ptr<BoardWindow> window_;
};

QTEST_MAIN(BoardWindowTest)
#include "board_window_test.moc"
