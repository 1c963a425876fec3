// The RTD2120 writer window.
#include "ui/window_test.h"

using namespace tongxun2120;

class RtdWriterWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    desk_.emplace();
    desk_->board.Connect(simulator::ConnectedChip::Rtd2120);
    desk_->Start();
    Desk::Press("Main", "Command3");
  }

  void errorsAreRedAndTheNextRunIsBlack() {
    desk_->board.Connect(simulator::ConnectedChip::None);
    Desk::Press("RTD2120Write", "Run");
    auto* status = ByName<QPlainTextEdit>("RTD2120Write", "WriteStatus");
    const auto colour = [&] { return status->palette().color(QPalette::Text); };
    QCOMPARE(status->toPlainText(), QStringLiteral("MCU link error"));
    QCOMPARE(colour(), QColor(255, 0, 0));
    QCOMPARE(Told(status, QAccessible::Value), QStringLiteral("MCU link error"));
    QVERIFY(Told(status, QAccessible::Description).endsWith(QStringLiteral("in red")));
    desk_->board.Connect(simulator::ConnectedChip::Rtd2120);
    QString said;
    ConfirmMessage(said);
    Desk::Press("RTD2120Write", "Run");
    QCOMPARE(said, QStringLiteral("Please load code in Buffer 1"));
    QCOMPARE(colour(), QColor(0, 0, 0));
  }

  void reopeningKeepsTheImagesAndResetsTheModes() {
    auto& writer = desk_->tool.rtdWriter;
    desk_->tool.rtdImages.Bank1Loaded = true;
    Desk::Press("RTD2120Write", "SecondBank");
    Desk::Press("RTD2120Write", "EraseOp");
    QCOMPARE(writer.BankMode, RtdBankMode::Second);
    QCOMPARE(writer.OperateMode, RtdOperateMode::EraseOnly);
    ByName<QAction>("RTD2120Write", "exit")->trigger();
    QVERIFY(ShownWindow("RTD2120Write") == nullptr);
    QCOMPARE(desk_->launcher->WriterState, OpenWriter::None);
    Desk::Press("Main", "Command3");
    QVERIFY(desk_->tool.rtdImages.Bank1Loaded);
    QCOMPARE(ShownText("RTD2120Write", "Bank1File"), QString());
    QCOMPARE(writer.BankMode, RtdBankMode::First);
    QCOMPARE(writer.OperateMode, RtdOperateMode::Automatic);
    Desk::Press("RTD2120Write", "BothBank");
    QCOMPARE(writer.BankMode, RtdBankMode::Both);
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
    const auto& images = desk_->tool.rtdImages;
    QVERIFY(images.Bank2Loaded && !images.Bank1Loaded);
    const QString sum = QString::fromStdString(HexText(images.RtdBankSum));
    QCOMPARE(ShownText("RTD2120Write", "Bank2File"), file);
    QCOMPARE(ShownText("RTD2120Write", "Bank2MaxAddr"), QString::number(images.Bank2Max));
    QCOMPARE(ShownText("RTD2120Write", "Bank2CheckSum"), sum);
    QCOMPARE(ShownText("RTD2120Write", "Bank1File"), QString());
  }

 private:
  std::optional<Desk> desk_;
};

QTEST_MAIN(RtdWriterWindowTest)
#include "rtd_writer_window_test.moc"
