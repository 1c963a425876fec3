#include "ui/vsk_writer_window.h"

#include <QKeyEvent>
#include <QMenuBar>

namespace {

QMenu* Named(QMenu* menu, const char* name) {
  menu->setObjectName(QLatin1String(name));
  return menu;
}

QLineEdit* AddReadOnlyBox(QWidget* client, const char* labelName, const char* boxName,
                          const QString& caption, int topTwips, int widthTwips) {
  AddLabel(client, labelName, caption, {120, topTwips});
  QLineEdit* box = AddTextBox(client, boxName, caption, {1320, topTwips, widthTwips, 270});
  box->setReadOnly(true);
  return box;
}

QLabel* AddStatus(QWidget* client, const char* name, const QString& accessibleName,
                  const Twips& at) {
  QLabel* label = AddLabel(client, name, QString(), at);
  label->setAccessibleName(accessibleName);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  return label;
}

}  // namespace

Form1::Form1(VskWriter& writer, IspOperations& isp, std::filesystem::path programFolder,
             std::function<void()> settingsAsked, std::function<void()> closed)
    : WriterWindow("Form1", QStringLiteral("quillon VSK830 And VSK630"), 8160, 6750,
                   std::move(programFolder), std::move(closed)),
      writer_(writer),
      isp_(isp),
      settingsAsked_(std::move(settingsAsked)) {
  CreateMenus();
  AddLabel(surface_, "Label1", QStringLiteral("Halvern Technology Inc"), {3240, 0, 3735, 375});
  AddLabel(surface_, "Label6", QStringLiteral("VSK830 AND VSK630 ISP TOOL V3.10"),
           {3360, 480, 3495, 375});
  QPushButton* load =
      AddButton(surface_, "Command1", QStringLiteral("Load File"), {120, 240, 1815, 495});
  connect(load, &QPushButton::clicked, this, Guarded(this, [this] { LoadFile(); }));
  CreateOperationOptions(surface_);
  CreateChipOptions(surface_);
  CreateImageBoxes(surface_);
  CreateIspMode(surface_);
  PreferMenuShortcuts(this);
}

void Form1::CreateMenus() {
  CreateFileMenu();
  CreateActionMenu();
  QMenu* help = Named(menuBar()->addMenu(QStringLiteral("&Help")), "Help");
  AddMenuItem(help, "about", QStringLiteral("&About"), "Ctrl+A", [this] { settingsAsked_(); });
}

void Form1::CreateFileMenu() {
  QMenu* file = Named(menuBar()->addMenu(QStringLiteral("File")), "File");
  QMenu* load = Named(file->addMenu(QStringLiteral("&Load File")), "Load_File");
  AddMenuItem(load, "Lcf", QStringLiteral("Load Compress File"));
  AddMenuItem(load, "Lnf", QStringLiteral("Load Normal File"), "", [this] { LoadFile(); });

  QMenu* save = Named(file->addMenu(QStringLiteral("&Save File")), "Save_f");
  AddMenuItem(save, "S_tbf", QStringLiteral("Save Text Bin File"));
  AddMenuItem(save, "S_bf", QStringLiteral("Save Bin File"));
  AddMenuItem(save, "S_mf", QStringLiteral("Save Mi File"));

  AddMenuItem(file, "Exit", QStringLiteral("E&xit"), "Ctrl+X", [this] { ExitChosen(); });
}

void Form1::CreateActionMenu() {
  QMenu* action = Named(menuBar()->addMenu(QStringLiteral("Action")), "Action");
  const auto run = [this](IspOperation operation) {
    return [this, operation] { writer_.RunFromMenu(operation, *this); };
  };
  AddMenuItem(action, "Page_Erase", QStringLiteral("Page &Erase"), "Ctrl+E");
  AddMenuItem(action, "Blank_Entire", QStringLiteral("Erase all"), "Ctrl+B",
              run(IspOperation::EraseAll));
  AddMenuItem(action, "Program", QStringLiteral("&Program"), "Ctrl+P", run(IspOperation::Program));
  AddMenuItem(action, "Page_Read_code", QStringLiteral("Page &Read"), "Ctrl+R");
  AddMenuItem(action, "Show_Load_Code", QStringLiteral("&Page Load"), "Ctrl+S");
}

void Form1::CreateOperationOptions(QWidget* client) {
  QGroupBox* frame =
      AddFrame(client, "Frame3", QStringLiteral("isp operate"), {120, 960, 1815, 2055});
  const auto addOperation = [&](const char* name, const char* caption, const Twips& at,
                                IspOperation operation) {
    OptionButton* option = AddOption(frame, name, QLatin1String(caption), at);
    option->setChecked(operation == IspOperation::Program);
    option->OnSelected([this, operation] { writer_.IspOperate = operation; });
    return option;
  };
  addOperation("Option6", "Page Erase", {120, 240, 1575, 255}, IspOperation::PageErase);
  addOperation("Option7", "Erase All", {120, 600, 1575, 180}, IspOperation::EraseAll);
  addOperation("Option8", "Program", {120, 960, 1575, 180}, IspOperation::Program);
  option9_ = addOperation("Option9", "Page Read", {120, 1320, 1575, 180}, IspOperation::PageRead);
  addOperation("Option10", "Page Load", {120, 1680, 1575, 180}, IspOperation::PageLoad);
}

void Form1::CreateChipOptions(QWidget* client) {
  constexpr std::array<Twips, kVskModels.size()> kPlaces{
      {{120, 240, 1455, 255}, {120, 600, 1575, 255}}};
  QGroupBox* frame = AddFrame(client, "Frame1", QStringLiteral("Select"), {120, 3120, 1815, 975});
  for (std::size_t i = 0; i < kVskModels.size(); ++i) {
    const std::string name = "Option" + std::to_string(i + 1);
    chips_[i] = AddOption(frame, name.c_str(), QLatin1String(kVskModels[i].name), kPlaces[i]);
    chips_[i]->setChecked(static_cast<VskChip>(i) == VskChip::Vsk830);
    chips_[i]->OnSelected([this, i] { isp_.ChipSelect = static_cast<VskChip>(i); });
  }
}

void Form1::CreateImageBoxes(QWidget* client) {
  text1_ = new QPlainTextEdit(client);
  text1_->setObjectName(QStringLiteral("Text1"));
  text1_->setAccessibleName(QStringLiteral("Data display"));
  text1_->setReadOnly(true);
  text1_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text1_->setLineWrapMode(QPlainTextEdit::NoWrap);
  text1_->document()->setDocumentMargin(2);
  QFont fixed;
  fixed.setFamilies({QStringLiteral("Liberation Mono"), QStringLiteral("Courier New")});
  fixed.setStyleHint(QFont::Monospace);
  fixed.setPixelSize(9);  // all 59 columns and 17 lines of a page in the given size
  text1_->setFont(fixed);
  Place(text1_, {2280, 1080, 5655, 3015});
  text1_->installEventFilter(this);

  text2_ = AddReadOnlyBox(client, "Label7", "Text2", QStringLiteral("MCU File"), 4320, 6615);
  text4_ = AddReadOnlyBox(client, "Label8", "Text4", QStringLiteral("MaxAddress"), 4920, 1215);
  text3_ = AddReadOnlyBox(client, "checksum", "Text3", QStringLiteral("CheckSum"), 5280, 1215);
  text5_ = AddReadOnlyBox(client, "Label9", "Text5", QStringLiteral("S/W CRC"), 5640, 1215);
  text6_ = AddReadOnlyBox(client, "Label10", "Text6", QStringLiteral("H/W CRC"), 6000, 1215);
}

void Form1::CreateIspMode(QWidget* client) {
  QGroupBox* frame =
      AddFrame(client, "Frame2", QStringLiteral("isp mode"), {3120, 4920, 1815, 855});
  OptionButton* option4 =
      AddOption(frame, "Option4", QStringLiteral("go to isp mode"), {120, 240, 1575, 255});
  option5_ = AddOption(frame, "Option5", QStringLiteral("quit isp mode"), {120, 600, 1575, 180});
  option4->OnSelected([this] { writer_.GoToIspMode(*this); });
  option5_->OnSelected([this] { writer_.QuitIspMode(*this); });

  QPushButton* run = AddButton(client, "Command4", QStringLiteral("Run"), {3120, 6120, 1815, 495});
  connect(run, &QPushButton::clicked, this, Guarded(this, [this] { writer_.Run(*this); }));

  const QString operation = QStringLiteral("Isp Operate Status");
  AddLabel(client, "Label5", operation, {6240, 4680});
  label3_ = AddStatus(client, "Label3", operation, {6120, 5040, 1695, 495});
  const QString mode = QStringLiteral("Isp Mode Status");
  AddLabel(client, "Label4", mode, {6240, 5760});
  label2_ = AddStatus(client, "Label2", mode, {6120, 6120, 1695, 495});
}

void Form1::ShowCalibration(std::int32_t tickPollCount) {
  text1_->setPlainText(QStringLiteral(" %1").arg(tickPollCount));
}

void Form1::SelectChip(VskChip chip) {
  // Said outright as well: a window that was just created shows the VSK830 already, and selecting
  // what is selected runs no action.
  isp_.ChipSelect = chip;
  chips_[static_cast<std::size_t>(chip)]->setChecked(true);
  findChild<QAction*>(QStringLiteral("Lcf"))->setEnabled(false);
  findChild<QAction*>(QStringLiteral("Lnf"))->setEnabled(true);
}

void Form1::LoadFile() { writer_.Load(*this); }

void Form1::ExitChosen() {
  isp_.QuitIspMode(*this);
  close();
}

bool Form1::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QMainWindow::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key != Qt::Key_PageDown && key != Qt::Key_PageUp) return false;
  const auto step = key == Qt::Key_PageDown ? IspOperation::NextPage : IspOperation::PreviousPage;
  Guarded(this, [this, step] { writer_.StepPage(step, *this); })();
  return true;
}
