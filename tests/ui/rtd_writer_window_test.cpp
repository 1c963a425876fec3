// The RTD2120 writer window.
#include <qpa/qplatformdrag.h>

#include "text/hex_text.h"
#include "ui/window_test.h"

using namespace tongxun2120;

class RtdWriterWindowTest : public WindowTest {
  Q_OBJECT

 private slots:
  void init() { StartWriter("Command3", simulator::ConnectedChip::Rtd2120); }

  void errorsAreRedAndTheNextRunIsBlack() {
    ScreenReader reader;
    desk_->board.Connect(simulator::ConnectedChip::None);
    kRtdWriter.Press("Run");
    auto* status = kRtdWriter.Find("WriteStatus");
    QCOMPARE(kRtdWriter.Text("WriteStatus"), QStringLiteral("MCU link error"));
    QCOMPARE(status->palette().color(QPalette::Text), QColor(255, 0, 0));
    QVERIFY(Told(status, QAccessible::Description).endsWith(QStringLiteral("in red")));
    QCOMPARE(reader.Spoken(), QStringLiteral("MCU link error (Messages of the run, in red)"));
    desk_->board.Connect(simulator::ConnectedChip::Rtd2120);
    QString said;
    ConfirmMessage(said);
    kRtdWriter.Press("Run");
    QCOMPARE(said, QStringLiteral("Please load code in Buffer 1|"));
    QCOMPARE(status->palette().color(QPalette::Text), QColor(0, 0, 0));
  }

  void aBankThatFailedIsSpokenBeforeTheLastLineWhichIsSeen() {
    for (const char* bank : {"Com64K", "Com64_96K"}) {
      ChooseFile(QStringLiteral(SOURCE_FOLDER "/samples/rtd2120/panel-bank1.hex"));
      kRtdWriter.Press(bank);
    }
    kRtdWriter.Press("BothBank");
    auto* status = kRtdWriter.Find<QPlainTextEdit>("WriteStatus");
    status->setFixedHeight(40);  // two lines
    desk_->board.faults.flippedBit = {.bank = 0, .address = 0, .bit = 0};
    ScreenReader reader;
    kRtdWriter.Press("Run");
    QCOMPARE(reader.Spoken(), QStringLiteral("CRC FAIL.; CRC OK. (Messages of the run, in red)"));
    const auto* bar = status->verticalScrollBar();
    QVERIFY(bar->maximum() > 0 && bar->value() == bar->maximum());
    desk_->board.faults = {};
    kRtdWriter.Press("Run");
    QCOMPARE(reader.Spoken(), QStringLiteral("CRC OK. (Messages of the run)"));
  }

  void reopeningKeepsTheImagesAndResetsTheModes() {
    auto& writer = desk_->tool.rtdWriter;
    desk_->tool.rtdImages.Bank1Loaded = true;
    kRtdWriter.Press("SecondBank");
    kRtdWriter.Press("EraseOp");
    QCOMPARE(writer.BankMode, RtdBankMode::Second);
    QCOMPARE(writer.OperateMode, RtdOperateMode::EraseOnly);
    kRtdWriter.Choose("exit");
    QVERIFY(kRtdWriter.Shown() == nullptr);
    kLauncher.Press("Command3");
    QVERIFY(desk_->tool.rtdImages.Bank1Loaded);
    QCOMPARE(kRtdWriter.Text("Bank1File"), QString());
    QCOMPARE(writer.BankMode, RtdBankMode::First);
    QCOMPARE(writer.OperateMode, RtdOperateMode::Automatic);
  }

  void aDroppedFileLoadsIntoItsRow() {
    const QString file = QStringLiteral(SOURCE_FOLDER "/samples/rtd2120/panel-bank2.hex");
    // Each is one drag, from place to place: what was refused is taken where it belongs.
    for (const QString& dragged : {QStringLiteral("/tmp/panel.H00"), file}) {
      for (const auto& [control, isRow] : {std::pair{"Label1", false},
                                           {"Com64_96K", true},
                                           {"Frame1", false},
                                           {"Com64K", true},
                                           {"WriteStatus", false},
                                           {"Bank2MaxAddr", true}}) {
        QVERIFY2(Drag(control, dragged) == (isRow && dragged == file), control);
      }
      if (dragged != file) Leave();
    }
    Drop("Bank2MaxAddr", file);
    QApplication::processEvents();
    const auto& images = desk_->tool.rtdImages;
    QVERIFY(images.Bank2Loaded && !images.Bank1Loaded);
    QCOMPARE(kRtdWriter.Text("Bank2File"), file);
    QCOMPARE(kRtdWriter.Text("Bank2MaxAddr"), QString::number(images.Bank2Max));
    QCOMPARE(kRtdWriter.Text("Bank2CheckSum").toStdString(), HexText(images.RtdBankSum));
    QCOMPARE(kRtdWriter.Text("Bank1File"), QString());
  }

  /// The program that the file comes from waits for it.
  void aDropEndsBeforeItsMessageAppears() {
    for (const bool closes : {false, true}) {
      const QString file =
          closes ? QStringLiteral(SOURCE_FOLDER "/samples/rtd2120/panel-bank1.hex")
                 : QString::fromStdString(desk_->folder.Write("a.hex", "no hex file\n"));
      QString said;
      if (!closes) ConfirmMessage(said);
      QVERIFY(Drag("Bank1File", file));
      Drop("Bank1File", file);
      QCOMPARE(said, QString());
      if (closes) kRtdWriter.Shown()->close();
      QApplication::processEvents();
      QCOMPARE(said.isEmpty(), closes);
      QVERIFY(!desk_->tool.rtdImages.Bank1Loaded);
    }
  }

 private:
  /// To the middle of the control, as the window system tells it; whether it may be dropped there.
  static bool Drag(const char* control, const QString& file) {
    const auto [data, at] = Dragged(control, file);
    return QWindowSystemInterface::handleDrag(kRtdWriter.Shown()->windowHandle(), data.get(), at,
                                              Qt::CopyAction, Qt::LeftButton, {})
        .isAccepted();
  }
  static void Drop(const char* control, const QString& file) {
    const auto [data, at] = Dragged(control, file);
    QWindowSystemInterface::handleDrop(kRtdWriter.Shown()->windowHandle(), data.get(), at,
                                       Qt::CopyAction, Qt::NoButton, {});
  }
  static void Leave() {
    QWindowSystemInterface::handleDrag(kRtdWriter.Shown()->windowHandle(), nullptr, {},
                                       Qt::IgnoreAction, {}, {});
  }
  static std::pair<std::unique_ptr<QMimeData>, QPoint> Dragged(const char* control,
                                                               const QString& file) {
    auto data = std::make_unique<QMimeData>();
    data->setUrls({QUrl::fromLocalFile(file)});
    const auto* box = kRtdWriter.Find(control);
    return {std::move(data), box->mapTo(kRtdWriter.Shown(), box->rect().center())};
  }
};

int ui_rtd_writer_window_test(int count, char** arguments) {
  return RunWindowTest<RtdWriterWindowTest>(count, arguments);
}
#include "rtd_writer_window_test.moc"
