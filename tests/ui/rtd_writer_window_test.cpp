// The RTD2120 writer window, and the launcher with two writers.
#include "ui/window_test.h"

using namespace tongxun2120;

class RtdWriterWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    desk_ = std::make_unique<Desk>();
    desk_->board.Connect(simulator::ConnectedChip::Rtd2120);
    desk_->Start();
    Desk::Press("Main", "Command3");
  }
  void cleanup() { desk_.reset(); }

  void writesBothSampleBanks() {
    const QString folder = QStringLiteral(SOURCE_FOLDER "/samples/rtd2120/");
    ChooseFile(folder + "panel-bank1.hex");
    Desk::Press("RTD2120Write", "Com64K");
    ChooseFile(folder + "panel-bank2.hex");
    Desk::Press("RTD2120Write", "Com64_96K");
    auto& images = desk_->tool.rtdImages;
    QCOMPARE(ShownText("RTD2120Write", "Bank2File"), folder + "panel-bank2.hex");
    QCOMPARE(ShownText("RTD2120Write", "Bank2MaxAddr"), QString::number(images.Bank2Max));
    QCOMPARE(ShownText("RTD2120Write", "Bank2CheckSum"),
             QString::fromStdString(HexText(images.RtdBankSum)));
    Desk::Press("RTD2120Write", "BothBank");
    Desk::Press("RTD2120Write", "Run");
    const QString status = ShownText("RTD2120Write", "WriteStatus");
    QCOMPARE(status.count(QStringLiteral("CRC OK.")), 2);
    for (const Bank bank : {Bank::First, Bank::Second}) {
      const BankImage image = images.Of(bank);
      const auto bytes = image.maximum + 1;
      QVERIFY(bytes > 256);
      QVERIFY(std::equal(image.cells.begin(), image.cells.begin() + bytes,
                         desk_->board.rtd2120.Bank(static_cast<int>(bank)).Cells().begin()));
    }
    Desk::Press("RTD2120Write", "EraseOp");
    Desk::Press("RTD2120Write", "Run");
    QCOMPARE(ShownText("RTD2120Write", "WriteStatus"), QStringLiteral("Erase MCU OK.\n"));
    QVERIFY(desk_->board.rtd2120.InIspMode());
  }

  void errorsAreRedAndTheNextRunIsBlack() {
    desk_->board.Connect(simulator::ConnectedChip::None);
    Desk::Press("RTD2120Write", "Run");
    QCOMPARE(ShownText("RTD2120Write", "WriteStatus"), QStringLiteral("MCU link error"));
    QCOMPARE(Colour(), QColor(255, 0, 0));
    auto* status = ByName<QWidget>("RTD2120Write", "WriteStatus");
    QCOMPARE(Told(status, QAccessible::Value), QStringLiteral("MCU link error"));
    QVERIFY(Told(status, QAccessible::Description).endsWith(QStringLiteral("in red")));
    desk_->board.Connect(simulator::ConnectedChip::Rtd2120);
    QString said;
    ConfirmMessage(said);
    Desk::Press("RTD2120Write", "Run");
    QCOMPARE(said, QStringLiteral("Please load code in Buffer 1"));
    QCOMPARE(Colour(), QColor(0, 0, 0));
    QVERIFY(!desk_->board.rtd2120.InIspMode());
  }

  void reopeningKeepsTheImagesAndResetsTheModes() {
    desk_->tool.rtdImages.Bank1Loaded = true;
    Desk::Press("RTD2120Write", "SecondBank");
    Desk::Press("RTD2120Write", "EraseOp");
    QCOMPARE(desk_->tool.rtdWriter.BankMode, RtdBankMode::Second);
    ByName<QAction>("RTD2120Write", "exit")->trigger();
    QVERIFY(ShownWindow("RTD2120Write") == nullptr);
    QCOMPARE(desk_->launcher->WriterState, OpenWriter::None);
    Desk::Press("Main", "Command3");
    QVERIFY(desk_->tool.rtdImages.Bank1Loaded);
    QCOMPARE(ShownText("RTD2120Write", "Bank1File"), QString());
    QCOMPARE(desk_->tool.rtdWriter.BankMode, RtdBankMode::First);
    QCOMPARE(desk_->tool.rtdWriter.OperateMode, RtdOperateMode::Automatic);
  }

  void oneWriterAtATime() {
    QCOMPARE(desk_->launcher->WriterState, OpenWriter::Rtd2120);
    QWidget* writer = ShownWindow("RTD2120Write");
    Desk::Press("Main", "Command3");
    QCOMPARE(ShownWindow("RTD2120Write"), writer);
    Desk::Press("Main", "Command2");
    QVERIFY(ShownWindow("RTD2120Write") == nullptr);
    QVERIFY(ShownWindow("Form1") != nullptr);
    QCOMPARE(desk_->launcher->WriterState, OpenWriter::Vsk);
    Desk::Press("Main", "Command3");
    QVERIFY(ShownWindow("Form1") == nullptr);
    QVERIFY(ShownWindow("RTD2120Write") != nullptr);
    QCOMPARE(desk_->launcher->WriterState, OpenWriter::Rtd2120);
    ShownWindow("RTD2120Write")->close();
    Desk::Press("Main", "Command1");
    QVERIFY(ShownWindow("Form1") != nullptr);
    QVERIFY(ShownWindow("RTD2120Write") == nullptr);
  }

  void aboutOpensTheSettingsBesideAUsableWindow() {
    ByName<QAction>("RTD2120Write", "About")->trigger();
    QVERIFY(ShownWindow("Form2") != nullptr);
    Desk::Press("RTD2120Write", "BothBank");
    QCOMPARE(desk_->tool.rtdWriter.BankMode, RtdBankMode::Both);
  }

  void aDroppedFileLoadsIntoItsRow() {
    QMimeData data;
    const QString file = QStringLiteral(SOURCE_FOLDER "/samples/rtd2120/panel-bank2.hex");
    data.setUrls({QUrl::fromLocalFile(file)});
    auto* window = ShownWindow("RTD2120Write");
    const auto drop = [&](const char* control) {
      auto* box = ByName<QWidget>("RTD2120Write", control);
      QDropEvent event(box->mapTo(window, box->rect().center()), Qt::CopyAction, &data,
                       Qt::LeftButton, {});
      event.ignore();
      static_cast<QObject*>(window)->event(&event);  // no drag entered the window
      return event.isAccepted();
    };
    QVERIFY(!drop("WriteStatus"));
    QVERIFY(drop("Bank2MaxAddr"));
    QCOMPARE(ShownText("RTD2120Write", "Bank2File"), file);
    QCOMPARE(ShownText("RTD2120Write", "Bank1File"), QString());
    QVERIFY(desk_->tool.rtdImages.Bank2Loaded && !desk_->tool.rtdImages.Bank1Loaded);
  }

 private:
  static QColor Colour() {
    return ByName<QPlainTextEdit>("RTD2120Write", "WriteStatus")->palette().color(QPalette::Text);
  }

  std::unique_ptr<Desk> desk_;
};

QTEST_MAIN(RtdWriterWindowTest)
#include "rtd_writer_window_test.moc"
