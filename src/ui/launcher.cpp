#include "ui/launcher.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>

#include "platform/files.h"
#include "vsk/entry_parameters.h"
#include "widgets/controls.h"

Main::Main(Tool& tool) : tool_(tool) {
  setObjectName(QStringLiteral("Main"));
  setWindowTitle(QStringLiteral("Main"));
  FixClientArea(this, 3360, 4305);
  move(screen()->availableGeometry().center() - rect().center());
  CreateButtons();
  tool_.timing.Calibrated = [this](std::int32_t tickPollCount) {
    if (form1_) form1_->ShowCalibration(tickPollCount);
  };
  StartUp();
}

Main::~Main() { tool_.timing.Calibrated = nullptr; }

void Main::CreateButtons() {
  const auto addButton = [this](const char* name, const QString& caption, int topTwips,
                                auto action) {
    QPushButton* button = AddButton(this, name, caption, {600, topTwips, 2175, 615});
    connect(button, &QPushButton::clicked, this, Guarded(this, action));
  };
  addButton("Command1", ModelOf(VskChip::Vsk830).name + QStringLiteral("V"), 480,
            [this] { OpenVskWriter(VskChip::Vsk830); });
  addButton("Command2", ModelOf(VskChip::Vsk630).name + QStringLiteral("V"), 1440,
            [this] { OpenVskWriter(VskChip::Vsk630); });
  addButton("Command3", QStringLiteral("RTD2120"), 2400, [this] { OpenRtdWriter(); });
  addButton("Command4", QStringLiteral("EXIT"), 3360, [] { QCoreApplication::exit(); });
}

void Main::StartUp() {
  const auto initial = tool_.directories.programFolder / "Initial";
  const auto turn = [] { QCoreApplication::processEvents(); };
  WriterState = OpenWriter::None;
  tool_.portAddress.LoadPortAddress();
  tool_.port.InitPortShadows();
  tool_.boards.LoadPortConfig(initial / "InitPort.csv", turn);
  tool_.boards.LoadCurrentBoard(initial / "CurrIspBoard.csv", turn);
  Init830And630();
  InitRTD2120();
}

void Main::Init830And630() {
  tool_.frames.HwCrc = -1;
  tool_.isp.ChipSelect = VskChip::Vsk830;
  tool_.vskWriter.IspOperate = IspOperation::Program;
  tool_.timing.SpeedFactor = 2;
  CreateForm1();  // the calibration writes into its data display
  tool_.timing.CalibrateSpeed();
  tool_.vskImages.CodeBuffer.fill(0xFF);
  tool_.vskWriter.LoadPage = 0;
  check_file();
  tool_.vskImages.CodeLoaded = false;
  tool_.vskWriter.LoadPageView = false;
  tool_.vskWriter.ReadPageView = false;
}

void Main::InitRTD2120() {
  tool_.rtdImages.Bank1Loaded = false;
  tool_.rtdImages.Bank2Loaded = false;
}

void Main::check_file() {
  const auto path = tool_.directories.programFolder / "Initial" / "security.cod";
  EnsureFile(path);
  if (ReadFile(path, 1).bytes.empty()) {
    form3_ = std::make_unique<Form3>(path);
    form3_->move(geometry().topRight() + QPoint(24, 0));  // beside the launcher
    form3_->show();
  }
  fileop::ReadSecurityFile(path, tool_.frames.IspParams);
}

void Main::CreateForm1() {
  form1_ = std::make_unique<Form1>(
      tool_.vskWriter, tool_.isp, tool_.directories.programFolder, [this] { ShowSettings(); },
      [this] {
        WriterState = OpenWriter::None;
        form1_.release()->deleteLater();
      });
}

void Main::OpenVskWriter(VskChip chip) {
  if (WriterState == OpenWriter::Rtd2120) rtdWrite_->close();
  if (WriterState != OpenWriter::Vsk) {
    if (!form1_) CreateForm1();
    form1_->show();
  }
  form1_->SelectChip(chip);
  WriterState = OpenWriter::Vsk;
}

void Main::OpenRtdWriter() {
  if (WriterState == OpenWriter::Rtd2120) return;
  if (WriterState == OpenWriter::Vsk) form1_->close();
  rtdWrite_ = std::make_unique<RTD2120Write>(
      tool_.rtdWriter, tool_.directories.programFolder, [this] { ShowSettings(); },
      [this] {
        WriterState = OpenWriter::None;
        rtdWrite_.release()->deleteLater();
      });
  rtdWrite_->show();
  WriterState = OpenWriter::Rtd2120;
}

void Main::ShowSettings() {
  if (!form2_) {
    form2_ = std::make_unique<Form2>(tool_.port, tool_.portAddress, tool_.timing,
                                     [this] { form2_.release()->deleteLater(); });
  }
  form2_->show();
  form2_->raise();
  form2_->activateWindow();
}

void Main::closeEvent(QCloseEvent* event) {
  event->accept();
  QCoreApplication::exit();
}
