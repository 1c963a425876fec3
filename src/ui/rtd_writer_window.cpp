#include "ui/rtd_writer_window.h"

#include <QMenuBar>
#include <QScrollBar>

#include "ui/run_picture.h"
#include "widgets/screen_space.h"

using namespace tongxun2120;

namespace {

constexpr QLatin1String kMessages("Messages of the run");

}  // namespace

RTD2120Write::RTD2120Write(RtdWriter& writer, FilePlaces& places,
                           std::function<void()> settingsAsked, std::function<void()> closed)
    : WriterWindow("RTD2120Write", QStringLiteral("RTD2120Write"), 8400, 5475, places,
                   std::move(closed)),
      writer_(writer),
      settingsAsked_(std::move(settingsAsked)) {
  CreateMenu();
  CreateBankRows();
  CreateStatus();
  CreateBankOptions();
  CreateOperationOptions();
  runButton_ = AddButton(surface_, "Run", QStringLiteral("Run"), {6120, 4440, 2055, 855});
  runButton_->setIcon(RunPicture());
  runButton_->setIconSize(QSize(32, 32));
  PreferMenuShortcuts(this);
  ShowWholeOrScrolled(*this, surface_);
  banks_[0].load->setFocus();
  Connect();
  Form_Load();
}

void RTD2120Write::Connect() {
  OnChosen(about_, Asked(this, &RTD2120Write::About_Click));
  OnChosen(exit_, Asked(this, &RTD2120Write::exit_Click));
  firstBankOption_->OnSelected([this] { MainBank_Click(); });
  secondBankOption_->OnSelected([this] { SecondBank_Click(); });
  bothBanksOption_->OnSelected([this] { BothBank_Click(); });
  automaticOption_->OnSelected([this] { AutoOp_Click(); });
  eraseOption_->OnSelected([this] { EraseOp_Click(); });
  connect(banks_[0].load, &QPushButton::clicked, this, Asked(this, &RTD2120Write::Com64K_Click));
  connect(banks_[1].load, &QPushButton::clicked, this, Asked(this, &RTD2120Write::Com64_96K_Click));
  connect(runButton_, &QPushButton::clicked, this, Asked(this, &RTD2120Write::Run_Click));
}

void RTD2120Write::Form_Load() {
  firstBankOption_->setChecked(true);
  automaticOption_->setChecked(true);
}

void RTD2120Write::MainBank_Click() { writer_.BankMode = RtdBankMode::First; }

void RTD2120Write::SecondBank_Click() { writer_.BankMode = RtdBankMode::Second; }

void RTD2120Write::BothBank_Click() { writer_.BankMode = RtdBankMode::Both; }

void RTD2120Write::AutoOp_Click() { writer_.OperateMode = RtdOperateMode::Automatic; }

void RTD2120Write::EraseOp_Click() { writer_.OperateMode = RtdOperateMode::EraseOnly; }

void RTD2120Write::Com64K_Click() { ChooseAndLoad(Bank::First); }

void RTD2120Write::Com64_96K_Click() { ChooseAndLoad(Bank::Second); }

void RTD2120Write::About_Click() { settingsAsked_(); }

void RTD2120Write::exit_Click() { close(); }

void RTD2120Write::Run_Click() {
  const ThreadHold hold;
  writer_.Run(*this);
}

void RTD2120Write::ChooseAndLoad(Bank bank) {
  const ThreadHold hold;
  Load(ChooseFile(kRtdFormats), bank);
}

void RTD2120Write::Load(const std::string& file, Bank bank) {
  const ThreadHold hold;
  static_cast<void>(writer_.Load(file, bank, *this));  // which shows a refusal
}

RTD2120Write::LoadCommand RTD2120Write::LoadCommandAt(QPoint place) {
  for (const Bank bank : {Bank::First, Bank::Second}) {
    const QRect box = banks_[static_cast<std::size_t>(bank)].file->geometry();
    if (place.y() >= box.top() && place.y() <= box.bottom()) {
      return {[this, bank](const std::string& file) { Load(file, bank); }, kRtdFormats};
    }
  }
  return {};
}

void RTD2120Write::CreateMenu() {
  QMenu* help = menuBar()->addMenu(QStringLiteral("Help"));
  help->setObjectName(QStringLiteral("help"));
  about_ = AddMenuItem(help, "About", QStringLiteral("&About"), "Ctrl+A");
  exit_ = AddMenuItem(help, "exit", QStringLiteral("&Exit"), "Ctrl+E");
}

void RTD2120Write::CreateBankRows() {
  AddLabel(surface_, "Label1", QStringLiteral("File Name"), {1200, 480, 810, 180});
  AddLabel(surface_, "Label2", QStringLiteral("Max Address"), {4920, 480, 990, 180});
  AddLabel(surface_, "Label5", QStringLiteral("CheckSum"), {6120, 480, 720, 180});
  AddLabel(surface_, "Label3", QStringLiteral("Load File"), {7080, 480, 810, 180});

  struct Row {
    const char *file, *maximumAddress, *checksum, *button, *caption;
    int top;
  };
  constexpr std::array<Row, 2> kRows{{
      {"Bank1File", "Bank1MaxAddr", "Bank1CheckSum", "Com64K", "64K", 840},
      {"Bank2File", "Bank2MaxAddr", "Bank2CheckSum", "Com64_96K", "64~96K", 1320},
  }};
  for (const Bank bank : {Bank::First, Bank::Second}) {
    const auto index = static_cast<std::size_t>(bank);
    const Row& row = kRows[index];
    BankBoxes& boxes = banks_[index];
    const QString suffix = QStringLiteral(" of bank %1").arg(index + 1);
    boxes.file = AddReadOnlyBox(surface_, row.file, QStringLiteral("File Name") + suffix,
                                {120, row.top, 4935, 375});
    boxes.maximumAddress =
        AddReadOnlyBox(surface_, row.maximumAddress, QStringLiteral("Max Address") + suffix,
                       {5160, row.top, 735, 375});
    boxes.checksum = AddReadOnlyBox(surface_, row.checksum, QStringLiteral("CheckSum") + suffix,
                                    {6000, row.top, 855, 375});
    boxes.load =
        AddButton(surface_, row.button, QLatin1String(row.caption), {6960, row.top, 1215, 375});
    boxes.load->setAccessibleDescription(
        QStringLiteral("Loads a file into the buffer of bank %1").arg(index + 1));
  }
}

void RTD2120Write::CreateStatus() {
  writeStatus_ = AddTextDisplay(surface_, "WriteStatus", QStringLiteral("Write status"),
                                {120, 1920, 3735, 3375});
  announcer_ = new Announcer(writeStatus_);
}

void RTD2120Write::CreateBankOptions() {
  QGroupBox* frame = AddFrame(surface_, "Frame1", QString(), {3960, 1800, 2055, 2415});
  frame->setAccessibleName(QStringLiteral("Banks"));
  firstBankOption_ = AddOption(frame, "MainBank", QStringLiteral("Main"), {120, 360, 1575, 375});
  secondBankOption_ =
      AddOption(frame, "SecondBank", QStringLiteral("Second"), {120, 1080, 1695, 375});
  bothBanksOption_ = AddOption(frame, "BothBank", QStringLiteral("Both"), {120, 1680, 1575, 375});
}

void RTD2120Write::CreateOperationOptions() {
  QGroupBox* frame = AddFrame(surface_, "Frame2", QString(), {6120, 1800, 2055, 2415});
  frame->setAccessibleName(QStringLiteral("Operation"));
  automaticOption_ = AddOption(frame, "AutoOp", QStringLiteral("Auto"), {240, 480, 1575, 375});
  eraseOption_ = AddOption(frame, "EraseOp", QStringLiteral("Erase"), {240, 1680, 1575, 375});
}

void RTD2120Write::SetStatusText(const std::string& text, const std::string& spoken) {
  writeStatus_->setPlainText(TextOf(text));
  announcer_->Speak(TextOf(spoken));
  writeStatus_->verticalScrollBar()->setValue(writeStatus_->verticalScrollBar()->maximum());
}

void RTD2120Write::SetStatusRed(bool red) { ShowLiveColour(writeStatus_, kMessages, red); }

void RTD2120Write::RefreshStatus() { writeStatus_->viewport()->repaint(); }

void RTD2120Write::ShowBankRow(Bank bank, const std::string& file,
                               const loadfile::ImageFacts& facts) {
  const BankBoxes& boxes = banks_[static_cast<std::size_t>(bank)];
  ShowLiveTextEnd(boxes.file, TextOf(file));
  ShowLiveText(boxes.maximumAddress, TextOf(facts.maximumAddress));
  ShowLiveText(boxes.checksum, TextOf(facts.checksum));
}
