#include "ui/launcher.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>

#include "platform/files.h"
#include "ui/controls.h"
#include "vsk/entry_parameters.h"

Main::Main(const Directories& directories, IicPort& port, PortConfig& portConfig,
           tongxun::BusTiming& timing, tongxun::CodeBuffers& buffers, tongxun::IspFrames& frames,
           IspOperations& isp, VskWriter& vskWriter, RtdWriter& rtdWriter)
    : directories_(directories),
      port_(port),
      portConfig_(portConfig),
      timing_(timing),
      buffers_(buffers),
      frames_(frames),
      isp_(isp),
      vskWriter_(vskWriter),
      rtdWriter_(rtdWriter) {
  setObjectName(QStringLiteral("Main"));
  setWindowTitle(QStringLiteral("Main"));
  FixClientArea(this, 3360, 4305);
  move(screen()->availableGeometry().center() - rect().center());
  CreateButtons();
  timing_.Calibrated = [this](std::int32_t tickPollCount) {
    if (form1_) form1_->ShowCalibration(tickPollCount);
  };
  StartUp();
}

Main::~Main() { timing_.Calibrated = nullptr; }

void Main::CreateButtons() {
  const auto addButton = [this](const char* name, const char* caption, int topTwips, auto action) {
    QPushButton* button = AddButton(this, name, QLatin1String(caption), {600, topTwips, 2175, 615});
    connect(button, &QPushButton::clicked, this, Guarded(this, action));
  };
  addButton("Command1", "VSK830V", 480, [this] { OpenVskWriter(VskChip::Vsk830); });
  addButton("Command2", "VSK630V", 1440, [this] { OpenVskWriter(VskChip::Vsk630); });
  addButton("Command3", "RTD2120", 2400, [this] { OpenRtdWriter(); });
  addButton("Command4", "EXIT", 3360, [] { QCoreApplication::exit(); });
}

void Main::StartUp() {
  const auto initial = directories_.programFolder / "Initial";
  const auto turn = [] { QCoreApplication::processEvents(); };
  WriterState = OpenWriter::None;
  portConfig_.LoadPortAddress();
  port_.InitPortShadows();
  portConfig_.LoadPortConfig(initial / "InitPort.csv", turn);
  portConfig_.LoadCurrentBoard(initial / "CurrIspBoard.csv", turn);
  Init830And630();
  InitRTD2120();
}

void Main::Init830And630() {
  frames_.HwCrc = -1;
  isp_.ChipSelect = VskChip::Vsk830;
  vskWriter_.IspOperate = IspOperation::Program;
  timing_.SpeedFactor = 2;
  CreateForm1();  // the calibration writes into its data display
  timing_.CalibrateSpeed();
  buffers_.CodeBuffer.fill(0xFF);
  vskWriter_.LoadPage = 0;
  check_file();
  buffers_.CodeLoaded = false;
  vskWriter_.LoadPageView = false;
  vskWriter_.ReadPageView = false;
}

void Main::InitRTD2120() {
  buffers_.Bank1Loaded = false;
  buffers_.Bank2Loaded = false;
}

void Main::check_file() {
  const auto path = directories_.programFolder / "Initial" / "security.cod";
  EnsureFile(path);
  if (ReadFile(path, 1).bytes.empty()) {
    form3_ = std::make_unique<Form3>(path);
    form3_->move(geometry().topRight() + QPoint(24, 0));  // beside the launcher
    form3_->show();
  }
  fileop::ReadSecurityFile(path, frames_.IspParams);
}

void Main::CreateForm1() {
  form1_ = std::make_unique<Form1>(
      vskWriter_, isp_, directories_.programFolder, [this] { ShowSettings(); },
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
      rtdWriter_, buffers_, directories_.programFolder, [this] { ShowSettings(); },
      [this] {
        WriterState = OpenWriter::None;
        rtdWrite_.release()->deleteLater();
      });
  rtdWrite_->show();
  WriterState = OpenWriter::Rtd2120;
}

void Main::ShowSettings() {
  if (!form2_) {
    form2_ = std::make_unique<Form2>(port_, portConfig_, timing_,
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
