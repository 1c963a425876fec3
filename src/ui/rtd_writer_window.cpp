#include "ui/rtd_writer_window.h"

#include <QMenuBar>
#include <QScrollBar>

#include "ui/run_picture.h"

using namespace tongxun2120;

RTD2120Write::RTD2120Write(RtdWriter& writer, std::filesystem::path programFolder,
                           std::function<void()> settingsAsked, std::function<void()> closed)
    : WriterWindow("RTD2120Write", QStringLiteral("RTD2120Write"), 8400, 5475,
                   std::move(programFolder), std::move(closed)),
      writer_(writer),
      settingsAsked_(std::move(settingsAsked)) {
  CreateMenu();
  CreateBankRows();
  CreateStatus();
  CreateBankOptions();
  CreateOperationOptions();
  QPushButton* run = AddButton(surface_, "Run", QStringLiteral("Run"), {6120, 4440, 2055, 855});
  run->setIcon(RunPicture());
  run->setIconSize(QSize(32, 32));
  connect(run, &QPushButton::clicked, this, Guarded(this, [this] { writer_.Run(*this); }));
  PreferMenuShortcuts(this);

  writer_.BankMode = RtdBankMode::First;
  writer_.OperateMode = RtdOperateMode::Automatic;
}

void RTD2120Write::CreateMenu() {
  QMenu* help = menuBar()->addMenu(QStringLiteral("Help"));
  help->setObjectName(QStringLiteral("help"));
  AddMenuItem(help, "About", QStringLiteral("&About"), "Ctrl+A", [this] { settingsAsked_(); });
  AddMenuItem(help, "exit", QStringLiteral("&Exit"), "Ctrl+E", [this] { close(); });
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
    boxes.file = AddTextBox(surface_, row.file, QStringLiteral("File Name") + suffix,
                            {120, row.top, 4935, 375});
    boxes.maximumAddress =
        AddTextBox(surface_, row.maximumAddress, QStringLiteral("Max Address") + suffix,
                   {5160, row.top, 735, 375});
    boxes.checksum = AddTextBox(surface_, row.checksum, QStringLiteral("CheckSum") + suffix,
                                {6000, row.top, 855, 375});
    for (QLineEdit* box : {boxes.file, boxes.maximumAddress, boxes.checksum}) {
      box->setReadOnly(true);
    }
    QPushButton* load =
        AddButton(surface_, row.button, QLatin1String(row.caption), {6960, row.top, 1215, 375});
    connect(load, &QPushButton::clicked, this,
            Guarded(this, [this, bank] { writer_.Load(bank, *this); }));
  }
}

void RTD2120Write::CreateStatus() {
  writeStatus_ = new QPlainTextEdit(surface_);
  writeStatus_->setObjectName(QStringLiteral("WriteStatus"));
  writeStatus_->setAccessibleName(QStringLiteral("Write status"));
  writeStatus_->setReadOnly(true);
  writeStatus_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  Place(writeStatus_, {120, 1920, 3735, 3375});
}

void RTD2120Write::CreateBankOptions() {
  QGroupBox* frame = AddFrame(surface_, "Frame1", QString(), {3960, 1800, 2055, 2415});
  const auto addMode = [&](const char* name, const char* caption, const Twips& at,
                           RtdBankMode mode) {
    OptionButton* option = AddOption(frame, name, QLatin1String(caption), at);
    option->setChecked(mode == RtdBankMode::First);
    option->OnSelected([this, mode] { writer_.BankMode = mode; });
  };
  addMode("MainBank", "Main", {120, 360, 1575, 375}, RtdBankMode::First);
  addMode("SecondBank", "Second", {120, 1080, 1695, 375}, RtdBankMode::Second);
  addMode("BothBank", "Both", {120, 1680, 1575, 375}, RtdBankMode::Both);
}

void RTD2120Write::CreateOperationOptions() {
  QGroupBox* frame = AddFrame(surface_, "Frame2", QString(), {6120, 1800, 2055, 2415});
  const auto addMode = [&](const char* name, const char* caption, const Twips& at,
                           RtdOperateMode mode) {
    OptionButton* option = AddOption(frame, name, QLatin1String(caption), at);
    option->setChecked(mode == RtdOperateMode::Automatic);
    option->OnSelected([this, mode] { writer_.OperateMode = mode; });
  };
  addMode("AutoOp", "Auto", {240, 480, 1575, 375}, RtdOperateMode::Automatic);
  addMode("EraseOp", "Erase", {240, 1680, 1575, 375}, RtdOperateMode::EraseOnly);
}

void RTD2120Write::SetStatusText(const std::string& text) {
  statusText_ = text;
  writeStatus_->setPlainText(TextOf(text));
  writeStatus_->verticalScrollBar()->setValue(writeStatus_->verticalScrollBar()->maximum());
}

void RTD2120Write::SetStatusRed(bool red) {
  QPalette palette = writeStatus_->palette();
  palette.setColor(QPalette::Text, red ? QColor(255, 0, 0) : QColor(0, 0, 0));
  writeStatus_->setPalette(palette);
}

void RTD2120Write::RefreshStatus() { writeStatus_->viewport()->repaint(); }

void RTD2120Write::ShowMessage(std::string_view message) { ShowMessageBox(this, message); }

void RTD2120Write::ShowBankRow(Bank bank, const RtdBankRow& row) {
  const BankBoxes& boxes = banks_[static_cast<std::size_t>(bank)];
  boxes.file->setText(TextOf(row.file));
  boxes.maximumAddress->setText(TextOf(row.maximumAddress));
  boxes.checksum->setText(TextOf(row.checksum));
}
