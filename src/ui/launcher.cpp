#include "ui/launcher.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QShortcut>
#include <utility>

#include "platform/files.h"
#include "ui/manual.h"
#include "vsk/entry_parameters.h"
#include "widgets/controls.h"
#include "widgets/guarded.h"
#include "widgets/screen_space.h"

namespace {

/// The samples stand in the program's folder, or came with the installation.
FilePlaces PlacesOf(const Directories& directories) {
  const auto own = directories.programFolder / "samples";
  const auto delivered = directories.deliveredFolder / "samples";
  std::error_code unreadable;  // a folder that may not be searched holds no samples either
  return {directories.programFolder, std::filesystem::exists(own, unreadable) ? own : delivered};
}

/// What opens the writer for a model of `kVskModels`, in their order.
struct VskButton {
  const char* name;
  int topTwips;
};
constexpr VskButton kVskButtons[] = {{"Command1", 480}, {"Command2", 1440}};
static_assert(std::size(kVskButtons) == kVskModels.size(), "each model has its button");

}  // namespace

Main::Main(Tool& tool) : tool_(tool), places_(PlacesOf(tool.directories)) {
  setObjectName(QStringLiteral("Main"));
  setWindowTitle(QStringLiteral("Main"));
  FixClientArea(this, 3360, 4305);
  move(screen()->availableGeometry().center() - rect().center());
  CreateButtons();
  Connect();
  Form_Load();
}

Main::~Main() { tool_.timing.Calibrated = nullptr; }

void Main::CreateButtons() {
  const auto add = [this](const char* name, const QString& caption, int topTwips) {
    return AddButton(this, name, caption, {600, topTwips, 2175, 615});
  };
  for (std::size_t i = 0; i < kVskModels.size(); ++i) {
    const QString caption = kVskModels[i].name + QStringLiteral("V");
    vskButtons_[i] = add(kVskButtons[i].name, caption, kVskButtons[i].topTwips);
  }
  rtdButton_ = add("Command3", QStringLiteral("RTD2120"), 2400);
  exitButton_ = add("Command4", QStringLiteral("EXIT"), 3360);
}

void Main::Connect() {
  const auto onClick = [this](QPushButton* button, void (Main::*handler)()) {
    connect(button, &QPushButton::clicked, this, Asked(this, handler));
  };
  for (std::size_t i = 0; i < vskButtons_.size(); ++i) {  // Command1_Click, Command2_Click
    const auto open = [this, i] { OpenVskWriter(static_cast<VskChip>(i)); };
    connect(vskButtons_[i], &QPushButton::clicked, this, Asked(this, open));
  }
  onClick(rtdButton_, &Main::Command3_Click);
  onClick(exitButton_, &Main::Command4_Click);
  auto* help = new QShortcut(QKeySequence(Qt::Key_F1), this);
  help->setContext(Qt::ApplicationShortcut);  // in every window
  help->setAutoRepeat(false);
  connect(help, &QShortcut::activated, this, Asked(this, &Main::ShowManualPage));
  tool_.timing.Calibrated = [this](std::int32_t tickPollCount) {
    if (form1_) form1_->ShowCalibration(tickPollCount);
  };
}

void Main::Command4_Click() { QCoreApplication::exit(); }

void Main::Form_Unload() { QCoreApplication::exit(); }

void Main::Form_Load() {
  WriterState = OpenWriter::None;
  tool_.LoadConfiguration([] { QCoreApplication::processEvents(); });
  Init830And630();
  InitRTD2120();
}

void Main::Init830And630() {
  tool_.frames.HwCrc = -1;
  tool_.isp.ChipSelect = VskChip::Vsk830;
  tool_.vskWriter.IspOperate = RunChoice::Program;
  tool_.timing.SpeedFactor = 2;
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
  if (ReadFile(path, 1)->empty()) {
    form3_ = std::make_unique<Form3>(path);
    PlaceBeside(*form3_, *this);
    form3_->show();
  }
  fileop::ReadSecurityFile(path, tool_.frames.IspParams);
}

void Main::CreateForm1() {
  form1_ = std::make_unique<Form1>(
      tool_.vskWriter, tool_.isp, places_, [this] { ShowSettings(); },
      [this] {
        WriterState = OpenWriter::None;
        form1_.release()->deleteLater();
      });
  // The first one shows what was measured before it was there.
  if (std::exchange(showsCalibration_, false)) {
    form1_->ShowCalibration(tool_.timing.TickPollCount);
  }
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

void Main::Command3_Click() {
  if (WriterState == OpenWriter::Rtd2120) return;
  if (WriterState == OpenWriter::Vsk) form1_->close();
  rtdWrite_ = std::make_unique<RTD2120Write>(
      tool_.rtdWriter, places_, [this] { ShowSettings(); },
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

void Main::ShowManualPage() { ShowManual(QApplication::activeWindow(), tool_.directories); }

/// The first thing to do at a first start is to enter the security codes. A launcher that is
/// restored is shown by the window system.
void Main::showEvent(QShowEvent* event) {
  if (event->spontaneous() || !form3_) return;
  QMetaObject::invokeMethod(form3_.get(), &QWidget::activateWindow, Qt::QueuedConnection);
}

void Main::closeEvent(QCloseEvent* event) {
  event->accept();
  Form_Unload();
}
