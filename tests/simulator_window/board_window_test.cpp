// The "Simulated board" window: where it opens, what its controls do to the board, and what it
// shows of the flash.
#include "simulator_window/board_window.h"

#include <QAccessible>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <QScrollBar>
#include <QTest>

#include "support/temp_folder.h"
#include "widgets/controls.h"

using namespace simulator;

class BoardWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { ApplyApplicationStyle(); }
  void init() {
    window_.reset();
    board_ = std::make_unique<SimulatedBoard>(CableWiring());
    board_->Connect(ConnectedChip::Vsk830);
    window_ = std::make_unique<BoardWindow>(*board_);
  }

  /// 1280 x 720 at a scale of 1.5, with a launcher of 224 pixels and what a desktop takes away.
  void fitsASmallScreen() {
    const QSize least = window_->minimumSizeHint();
    QVERIFY2(least.width() <= 853 - 224 - 40, qPrintable(QString::number(least.width())));
    QVERIFY2(least.height() <= 480 - 44, qPrintable(QString::number(least.height())));
  }

  void opensInsideTheScreenBesideTheLauncher_data() {
    QTest::addColumn<QPoint>("launcherAt");
    QTest::newRow("middle") << QPoint(288, 250);
    QTest::newRow("bottom right") << QPoint(570, 500);
    QTest::newRow("left") << QPoint(0, 0);
  }
  void opensInsideTheScreenBesideTheLauncher() {
    QFETCH(QPoint, launcherAt);
    QWidget launcher;
    launcher.setFixedSize(200, 287);
    launcher.move(launcherAt);
    launcher.show();
    window_->resize(2000, 2000);
    window_->ShowBeside(launcher);
    QVERIFY(QTest::qWaitForWindowActive(&launcher));
    QVERIFY(window_->isVisible());
    QVERIFY(launcher.screen()->availableGeometry().contains(window_->frameGeometry()));
    QVERIFY(launcher.screen()->availableGeometry().contains(launcher.frameGeometry()));
    QVERIFY(!window_->geometry().intersects(launcher.geometry()));
  }

  void closedItLeavesAButtonThatOpensItAgain() {
    window_->show();
    window_->close();
    QVERIFY(!window_->isVisible());
    QPushButton* reopen = nullptr;
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (top->isVisible()) reopen = qobject_cast<QPushButton*>(top);
    }
    QVERIFY(reopen != nullptr);
    reopen->close();
    QVERIFY(reopen->isVisible());
    reopen->click();
    QVERIFY(window_->isVisible());
    QVERIFY(!reopen->isVisible());
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
      QVERIFY2(!Find<QCheckBox>(idle)->isEnabled(), idle);
    }
    QVERIFY(Find<QCheckBox>("SdaStuckLow")->isEnabled());
    QVERIFY(!Find<QPushButton>("PowerCycle")->isEnabled());
  }

  void numbersChangedWhileAFaultIsOnTakeEffect() {
    Find<QCheckBox>("BitFlipped")->setChecked(true);
    Find<QSpinBox>("bit")->setValue(5);
    Find<QSpinBox>("address (hex)")->setValue(0xABC);
    QCOMPARE(board_->faults.flippedBit->address, 0xABCU);
    QCOMPARE(board_->faults.flippedBit->bit, 5);
    Find<QCheckBox>("ByteRefused")->setChecked(true);
    Find<QSpinBox>("of the next frame number")->setValue(3);
    QCOMPARE(board_->faults.refusedByte->frame, std::uint64_t{3});
    Find<QCheckBox>("Unplugged")->setChecked(true);
    QCOMPARE(board_->faults.unpluggedAfterFrame, std::uint64_t{0});
    Find<QSpinBox>("after so many more frames")->setValue(7);
    QCOMPARE(board_->faults.unpluggedAfterFrame, std::uint64_t{7});
  }

  void aSpentFaultUnticksItself() {
    auto* refused = Find<QCheckBox>("ByteRefused");
    refused->setChecked(true);
    window_->Refresh();
    QVERIFY(refused->isChecked());
    Frame();
    window_->Refresh();
    QVERIFY(!refused->isChecked());
    QVERIFY(!board_->faults.refusedByte);
  }

  void aPowerCycleEndsWhatHangs() {
    for (const char* fault : {"BusyForEver", "SdaStuckLow"}) {
      Find<QCheckBox>(fault)->setChecked(true);
    }
    QVERIFY(board_->faults.busyForEver && board_->faults.sdaStuckLow);
    Find<QPushButton>("PowerCycle")->click();
    QVERIFY(!board_->faults.busyForEver && !board_->faults.sdaStuckLow);
    QVERIFY(!Find<QCheckBox>("BusyForEver")->isChecked());
    QVERIFY(!Find<QCheckBox>("SdaStuckLow")->isChecked());
  }

  void theFlashKeepsItsPlaceAndShowsWhatChanged() {
    window_->show();
    Find<QSpinBox>("GoTo")->setValue(0xABC0);
    QCOMPARE(Find<QSpinBox>("GoTo")->text(), QStringLiteral("ABC0"));
    auto* cells = Find<QTableView>("Cells");
    const QAbstractItemModel* model = cells->model();
    const int top = cells->rowAt(0);
    QCOMPARE(model->headerData(top, Qt::Vertical).toString(), QStringLiteral("ABC0"));

    Write(0xAB, {'H', 'i', 0x00});
    window_->Refresh();
    QCOMPARE(cells->rowAt(0), top);
    const auto at = [model](int row, int column, int role = Qt::DisplayRole) {
      return model->index(row, column).data(role);
    };
    QCOMPARE(at(0xAB0, 1).toString(), QStringLiteral("69"));
    QCOMPARE(at(0xAB0, 16).toString(), QStringLiteral("Hi.") + QString(13, QLatin1Char('.')));
    QVERIFY(at(0xAB0, 2, Qt::BackgroundRole).isValid());
    QVERIFY(!at(0xAB0, 3, Qt::BackgroundRole).isValid());

    Write(0xAC, {0x7F});
    window_->Refresh();
    QVERIFY(!at(0xAB0, 2, Qt::BackgroundRole).isValid());
    QVERIFY(at(0xAC0, 0, Qt::BackgroundRole).isValid());
  }

  void liveLabelsAreReadAsTheyAreShown() {
    Frame();
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
    Choose((folder / "session").string());
    record->click();
    QVERIFY(record->isChecked());
    QVERIFY(record->text().contains(QStringLiteral("Recording to session.vcd")));
    Frame();
    record->click();
    QVERIFY(!record->isChecked());
    QVERIFY(folder.Read("session.vcd").find("0d") != std::string::npos);
  }

  void aRecordingThatCannotBeWrittenIsTold_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no such folder") << "/nowhere/bus.vcd"
                                    << "No such file or directory";
    QTest::newRow("full disk") << "/dev/full"
                               << "No space left on device";
  }
  void aRecordingThatCannotBeWrittenIsTold() {
    QFETCH(QString, file);
    QFETCH(QString, reason);
    const TempFolder folder;
    std::filesystem::create_symlink(file.toStdString(), folder / "bus.vcd");
    QString told;
    Choose((folder / "bus.vcd").string(), &told);
    Find<QPushButton>("Record")->click();
    QVERIFY2(told.contains(reason), qPrintable(told));
    QVERIFY(!Find<QPushButton>("Record")->isChecked());
  }

 private:
  template <typename Control>
  Control* Find(const char* name) {
    auto* control = window_->findChild<Control*>(QLatin1String(name));
    if (control == nullptr) qFatal("no control %s", name);
    return control;
  }

  /// Answers the file dialog. With `told`: replaces a file that is there, and confirms the message
  /// that follows.
  static void Choose(const std::string& file, QString* told = nullptr) {
    QTimer::singleShot(0, qApp, [file, told] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
          ->setText(QString::fromStdString(file));
      if (told != nullptr) QTimer::singleShot(0, qApp, [told] { Answer(told); });
      static_cast<QDialog*>(dialog)->accept();
    });
  }
  static void Answer(QString* told) {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    QAbstractButton* replace = box == nullptr ? nullptr : box->button(QMessageBox::Yes);
    if (box == nullptr || replace != nullptr) QTimer::singleShot(0, qApp, [told] { Answer(told); });
    if (replace != nullptr) return replace->click();
    if (box == nullptr) return;
    *told += box->text() + box->informativeText();
    box->accept();
  }

  /// One frame with one byte on the bus, which programs nothing.
  void Frame() {
    Drive(true, true);
    Drive(false, true);
    for (int clock = 0; clock < 9; ++clock) {
      Drive(false, false);
      Drive(false, true);
    }
    Drive(false, false);
    Drive(false, true);
    Drive(true, true);
  }
  void Drive(bool sda, bool scl) {
    board_->cable.DlPortWritePortUchar(0x378, sda ? 0 : 0x80);
    board_->cable.DlPortWritePortUchar(0x37A, scl ? 0 : 0x08);
  }

  /// Programs the beginning of a page of the VSK830.
  void Write(std::uint8_t page, const std::vector<std::uint8_t>& bytes) {
    VskChip& chip = board_->vsk830;
    for (const auto& frame : {std::vector<std::uint8_t>{0x5A, 0xA5}, {0x96, 0xA0, page}}) {
      Send(chip, frame);
    }
    std::vector<std::uint8_t> data{0x94, 0x00};
    data.insert(data.end(), bytes.begin(), bytes.end());
    Send(chip, data);
  }
  static void Send(VskChip& chip, const std::vector<std::uint8_t>& frame) {
    chip.OnStart();
    chip.OnAddress(frame[0]);
    for (std::size_t i = 1; i < frame.size(); ++i) chip.OnWrite(frame[i]);
    chip.OnStop();
  }

  std::unique_ptr<SimulatedBoard> board_;
  std::unique_ptr<BoardWindow> window_;
};

QTEST_MAIN(BoardWindowTest)
#include "board_window_test.moc"
