#include "ui/vsk_writer_window.h"

#include <QKeyEvent>
#include <QMenuBar>

#include "widgets/screen_space.h"

namespace {

QMenu* Named(QMenu* menu, const char* name) {
  menu->setObjectName(QLatin1String(name));
  return menu;
}

/// What "Run" does.
struct OperationOption {
  const char *name, *caption;
  Twips at;
  RunChoice choice;
};
constexpr std::array<OperationOption, 5> kOperationOptions{{
    {"Option6", "Page Erase", {120, 240, 1575, 255}, RunChoice::PageErase},
    {"Option7", "Erase All", {120, 600, 1575, 180}, RunChoice::EraseAll},
    {"Option8", "Program", {120, 960, 1575, 180}, RunChoice::Program},
    {"Option9", "Page Read", {120, 1320, 1575, 180}, RunChoice::PageRead},
    {"Option10", "Page Load", {120, 1680, 1575, 180}, RunChoice::PageLoad},
}};

/// What selects a model of `kVskModels`, in their order.
struct ChipOption {
  const char* name;
  Twips at;
};
constexpr ChipOption kChipOptions[] = {
    {"Option1", {120, 240, 1455, 255}},
    {"Option2", {120, 600, 1575, 255}},
};
static_assert(std::size(kChipOptions) == kVskModels.size(), "each model has its option");

}  // namespace

Form1::Form1(VskWriter& writer, IspOperations& isp, FilePlaces& places,
             std::function<void()> settingsAsked, std::function<void()> closed)
    : WriterWindow("Form1", QStringLiteral("quillon VSK830 And VSK630"), 8160, 6750, places,
                   std::move(closed)),
      writer_(writer),
      isp_(isp),
      settingsAsked_(std::move(settingsAsked)) {
  CreateMenus();
  AddLabel(surface_, "Label1", QStringLiteral("Halvern Technology Inc"), {3240, 0, 3735, 375});
  AddLabel(surface_, "Label6", QStringLiteral("VSK830 AND VSK630 ISP TOOL V3.10"),
           {3360, 480, 3495, 375});
  loadButton_ = AddButton(surface_, "Command1", QStringLiteral("Load File"), {120, 240, 1815, 495});
  CreateOperationOptions(surface_);
  CreateChipOptions(surface_);
  CreateImageBoxes(surface_);
  CreateIspMode(surface_);
  PreferMenuShortcuts(this);
  ShowWholeOrScrolled(*this, surface_);
  loadButton_->setFocus();
  Connect();
}

void Form1::Connect() {
  const auto onClick = [this](QPushButton* button, void (Form1::*handler)()) {
    connect(button, &QPushButton::clicked, this, Asked(this, handler));
  };
  const auto onChosen = [this](QAction* item, void (Form1::*handler)()) {
    OnChosen(item, Asked(this, handler));
  };
  onClick(loadButton_, &Form1::Command1_Click);
  onClick(runButton_, &Form1::Command4_Click);
  for (std::size_t i = 0; i < chips_.size(); ++i) {  // Option1_Click, Option2_Click
    chips_[i]->OnSelected([this, i] { isp_.ChipSelect = static_cast<VskChip>(i); });
  }
  for (std::size_t i = 0; i < operations_.size(); ++i) {  // Option6_Click to Option10_Click
    operations_[i]->OnSelected(
        [this, choice = kOperationOptions[i].choice] { writer_.IspOperate = choice; });
  }
  enterOption_->OnSelected(Asked(this, &Form1::Option4_Click));
  quitOption_->OnSelected(Asked(this, &Form1::Option5_Click));
  onChosen(loadNormal_, &Form1::Lnf_Click);
  onChosen(exit_, &Form1::Exit_Click);
  onChosen(eraseAll_, &Form1::Blank_Entire_Click);
  onChosen(program_, &Form1::Program_Click);
  onChosen(about_, &Form1::about_Click);
  dataDisplay_->installEventFilter(this);  // Text1_KeyDown
}

void Form1::CreateMenus() {
  CreateFileMenu();
  CreateActionMenu();
  QMenu* help = Named(menuBar()->addMenu(QStringLiteral("&Help")), "Help");
  about_ = AddMenuItem(help, "about", QStringLiteral("&About"), "Ctrl+A");
}

void Form1::CreateFileMenu() {
  QMenu* file = Named(menuBar()->addMenu(QStringLiteral("File")), "File");
  QMenu* load = Named(file->addMenu(QStringLiteral("&Load File")), "Load_File");
  loadCompressed_ = AddMenuItem(load, "Lcf", QStringLiteral("Load Compress File"));
  loadNormal_ = AddMenuItem(load, "Lnf", QStringLiteral("Load Normal File"));

  QMenu* save = Named(file->addMenu(QStringLiteral("&Save File")), "Save_f");
  AddMenuItem(save, "S_tbf", QStringLiteral("Save Text Bin File"));
  AddMenuItem(save, "S_bf", QStringLiteral("Save Bin File"));
  AddMenuItem(save, "S_mf", QStringLiteral("Save Mi File"));

  exit_ = AddMenuItem(file, "Exit", QStringLiteral("E&xit"), "Ctrl+X");
}

void Form1::CreateActionMenu() {
  QMenu* action = Named(menuBar()->addMenu(QStringLiteral("Action")), "Action");
  AddMenuItem(action, "Page_Erase", QStringLiteral("Page &Erase"), "Ctrl+E");
  eraseAll_ = AddMenuItem(action, "Blank_Entire", QStringLiteral("Erase all"), "Ctrl+B");
  program_ = AddMenuItem(action, "Program", QStringLiteral("&Program"), "Ctrl+P");
  AddMenuItem(action, "Page_Read_code", QStringLiteral("Page &Read"), "Ctrl+R");
  AddMenuItem(action, "Show_Load_Code", QStringLiteral("&Page Load"), "Ctrl+S");
}

void Form1::CreateOperationOptions(QWidget* client) {
  QGroupBox* frame =
      AddFrame(client, "Frame3", QStringLiteral("isp operate"), {120, 960, 1815, 2055});
  for (std::size_t i = 0; i < operations_.size(); ++i) {
    const OperationOption& row = kOperationOptions[i];
    operations_[i] = AddOption(frame, row.name, QLatin1String(row.caption), row.at);
    operations_[i]->setChecked(row.choice == RunChoice::Program);
    if (row.choice == RunChoice::PageRead) pageReadOption_ = operations_[i];
  }
}

void Form1::CreateChipOptions(QWidget* client) {
  QGroupBox* frame = AddFrame(client, "Frame1", QStringLiteral("Select"), {120, 3120, 1815, 975});
  for (std::size_t i = 0; i < kVskModels.size(); ++i) {
    const ChipOption& option = kChipOptions[i];
    chips_[i] = AddOption(frame, option.name, QLatin1String(kVskModels[i].name), option.at);
    chips_[i]->setChecked(static_cast<VskChip>(i) == VskChip::Vsk830);
  }
}

void Form1::CreateImageBoxes(QWidget* client) {
  dataDisplay_ =
      AddTextDisplay(client, "Text1", QStringLiteral("Data display"), {2280, 1080, 5655, 3015});
  dataDisplay_->setLineWrapMode(QPlainTextEdit::NoWrap);
  dataDisplay_->document()->setDocumentMargin(2);
  QFont fixed;
  fixed.setFamilies({QStringLiteral("Liberation Mono"), QStringLiteral("Courier New"),
                     QStringLiteral("DejaVu Sans Mono")});
  fixed.setStyleHint(QFont::Monospace);
  fixed.setPixelSize(9);  // all 59 columns and 17 lines of a page in the given size
  dataDisplay_->setFont(fixed);

  struct Row {
    const char *label, *box, *caption;
    int top, width = 1215;
  };
  constexpr std::array<Row, 5> kRows{{{"Label7", "Text2", "MCU File", 4320, 6615},
                                      {"Label8", "Text4", "MaxAddress", 4920},
                                      {"checksum", "Text3", "CheckSum", 5280},
                                      {"Label9", "Text5", "S/W CRC", 5640},
                                      {"Label10", "Text6", "H/W CRC", 6000}}};
  for (std::size_t i = 0; i < kRows.size(); ++i) {
    const Row& row = kRows[i];
    const QLatin1String caption(row.caption);
    AddLabel(client, row.label, caption, {120, row.top});
    imageBoxes_[i] = AddReadOnlyBox(client, row.box, caption, {1320, row.top, row.width, 270});
  }
}

void Form1::CreateIspMode(QWidget* client) {
  QGroupBox* frame =
      AddFrame(client, "Frame2", QStringLiteral("isp mode"), {3120, 4920, 1815, 855});
  enterOption_ =
      AddOption(frame, "Option4", QStringLiteral("go to isp mode"), {120, 240, 1575, 255});
  quitOption_ = AddOption(frame, "Option5", QStringLiteral("quit isp mode"), {120, 600, 1575, 180});
  runButton_ = AddButton(client, "Command4", QStringLiteral("Run"), {3120, 6120, 1815, 495});

  const QString operation = QStringLiteral("Isp Operate Status");
  AddLabel(client, "Label5", operation, {6240, 4680});
  operationStatus_ = AddSpokenLabel(client, "Label3", operation, {6120, 5040, 1695, 495});
  const QString mode = QStringLiteral("Isp Mode Status");
  AddLabel(client, "Label4", mode, {6240, 5760});
  ispModeStatus_ = AddSpokenLabel(client, "Label2", mode, {6120, 6120, 1695, 495});
}

void Form1::ShowCalibration(std::int32_t tickPollCount) {
  dataDisplay_->setPlainText(QStringLiteral(" %1").arg(tickPollCount));
}

void Form1::SelectChip(VskChip chip) {
  // Said outright as well: a window that was just created shows the VSK830 already, and selecting
  // what is selected runs no action.
  isp_.ChipSelect = chip;
  chips_[static_cast<std::size_t>(chip)]->setChecked(true);
  loadCompressed_->setEnabled(false);
  loadNormal_->setEnabled(true);
}

void Form1::Lnf_Click() {
  const ThreadHold hold;
  Load(ChooseFile(isp_.Model().formats));
}

void Form1::Load(const std::string& file) {
  const ThreadHold hold;
  static_cast<void>(writer_.Load(file, *this));  // which shows a refusal
}

void Form1::Command1_Click() { Lnf_Click(); }

Form1::LoadCommand Form1::LoadCommandAt(QPoint) {
  return {[this](const std::string& file) { Load(file); }, isp_.Model().formats};
}

void Form1::Command4_Click() {
  const ThreadHold hold;
  writer_.Run(*this);
}

void Form1::RunFromMenu(RunChoice choice) {
  const ThreadHold hold;
  writer_.RunFromMenu(choice, *this);
}

void Form1::Blank_Entire_Click() { RunFromMenu(RunChoice::EraseAll); }

void Form1::Program_Click() { RunFromMenu(RunChoice::Program); }

void Form1::Option4_Click() {
  const ThreadHold hold;
  writer_.GoToIspMode(*this);
}

void Form1::Option5_Click() {
  const ThreadHold hold;
  writer_.QuitIspMode(*this);
}

void Form1::about_Click() { settingsAsked_(); }

void Form1::Exit_Click() {
  {
    const ThreadHold hold;
    isp_.QuitIspMode(*this);
  }
  close();
}

void Form1::Text1_KeyDown(RunChoice step) {
  const ThreadHold hold;
  const auto shown = pageReadOption_->isChecked() ? RunChoice::PageRead : RunChoice::PageLoad;
  writer_.StepPage(step, shown, *this);
}

bool Form1::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QMainWindow::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key != Qt::Key_PageDown && key != Qt::Key_PageUp) return false;
  const auto step = key == Qt::Key_PageDown ? RunChoice::NextPage : RunChoice::PreviousPage;
  Guarded(this, [this, step] { Text1_KeyDown(step); })();
  return true;
}
