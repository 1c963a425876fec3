#include "soak/session.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSlider>
#include <array>
#include <stdexcept>

#include "session/by_name.h"
#include "soak/image_files.h"
#include "soak/verdict.h"
#include "text/hex_text.h"
#include "vsk/entry_parameters.h"

namespace {

IspBoard RandomWiring(Random& random) {
  const auto bit = [&](std::size_t least, std::size_t most) {
    return static_cast<std::int16_t>(1 << Pick(random, least, most));
  };
  const auto direct = [&] { return Pick(random, 0, 1) == 0; };
  IspBoard wiring;
  wiring.SdaOut = {.address = 0x378, .polarity = direct(), .mask = bit(0, 7)};
  wiring.SdaIn = {.address = 0x379, .polarity = direct(), .mask = bit(3, 7)};
  wiring.SclOut = {.address = 0x37A, .polarity = direct(), .mask = bit(0, 3)};
  return wiring;
}

std::string BoardFile(const IspBoard& wiring, std::size_t row) {
  std::string text = "boards," + std::to_string(row + 1) + "\r\n";
  for (std::size_t i = 0; i <= row; ++i) {
    text += "board " + std::to_string(i);
    for (const LineSpec* line : {&wiring.SdaOut, &wiring.SdaIn, &wiring.SclOut, &wiring.SclIn}) {
      text += ",port," + HexText(line->address) + ",polarity," + (line->polarity ? "+" : "-") +
              ",mask," + HexText(i == row ? line->mask : 0);
    }
    text += "\r\n";
  }
  return text;
}

const std::vector<simulator::SimulatedBoard::Choice>& Chips() {
  static const auto chips = simulator::SimulatedBoard::Choices();
  return chips;
}

/// The button or option of a visible window whose caption begins with the chip's name.
QAbstractButton* ForChip(const char* window, const char* chip) {
  for (auto* button : ShownWindow(window)->findChildren<QAbstractButton*>()) {
    if (button->text().startsWith(QLatin1String(chip))) return button;
  }
  throw std::runtime_error(std::string(window) + " has nothing for " + chip);
}

}  // namespace

void BoundedPort::Count() {
  if (left_ == 0) throw std::runtime_error("too many port accesses");
  --left_;
}

Session::Session(Random& random, DialogRobot& robot, Tally& tally)
    : random_(random),
      robot_(robot),
      tally_(tally),
      wiring_(RandomWiring(random)),
      board_(wiring_) {
  board_.wire.ListenTo(&crcRange_);
  const std::size_t row = Pick(random_, 0, 20);
  folder_.Write("program/Initial/InitPort.csv", BoardFile(wiring_, row));
  folder_.Write("program/Initial/CurrIspBoard.csv", std::to_string(row));
  const simulator::VskIdentity identity;
  folder_.Write("program/Initial/security.cod",
                fileop::EntryContent(identity.address, identity.codes));
  port_.BeginRun();
  tool_ = std::make_unique<Tool>(
      port_, ticks_, Directories{folder_ / "program", folder_ / "config", {}, folder_ / "state"},
      [this](const std::string& message) {
        robot_.Note("dialog", QString::fromStdString(message));
      });
  tool_->runReport.Ended = [this](RunLine& line) {
    ended_ = line;
    tool_->runLog.Append(line);
  };
  launcher_ = std::make_unique<Main>(*tool_);
  launcher_->show();
  ChangeBoard();
}

void Session::Click(const char* window, const char* button) const {
  ByName<QAbstractButton>(window, button)->click();
}

const char* Session::OpenWriterName() const {
  for (const char* name : {"Form1", "RTD2120Write"}) {
    if (ShownWindow(name) != nullptr) return name;
  }
  return nullptr;
}

void Session::BeginRun() {
  ++tally_.runs;
  robot_.declined = false;
  ended_ = {};
  port_.BeginRun();
}

void Session::EndRun() {
  if (port_.Exhausted()) ++tally_.endless;
  port_.BeginRun();
}

void Session::CompareShown(const QString& text, const QColor& colour) {
  const bool red = colour == QColor(255, 0, 0);
  const bool asReturned = text.toStdString() == ended_.result.text;
  if (!asReturned || red != !ended_.result.failure.empty()) ++tally_.shownOtherwise;
}

std::size_t Session::Plugged() const {
  const auto isPlugged = [this](const auto& choice) { return choice.chip == board_.Connected(); };
  return static_cast<std::size_t>(std::ranges::find_if(Chips(), isPlugged) - Chips().begin());
}

bool Session::Sound(std::string_view chip) const {
  return Chips()[Plugged()].name == chip && board_.faults == simulator::Faults{} &&
         tool_->port.PortBase == IicPort::kDefaultPortBase;
}

void Session::EndFaults() {
  if (board_.faults.busyForEver) board_.PowerCycle();  // the chip goes on hanging
  board_.faults = {};
}

void Session::OpenWriter() {
  // Mostly the writer for the chip that is plugged in.
  const bool fitting = Plugged() > 0 && Pick(random_, 0, 5) != 0;
  const std::size_t chip = fitting ? Plugged() : Pick(random_, 1, Chips().size() - 1);
  ForChip("Main", Chips()[chip].name)->click();
}

void Session::ChangeBoard() {
  const std::size_t pick = Pick(random_, 0, 12);
  EndFaults();
  board_.Connect(Chips()[pick == 0 ? 0 : 1 + pick % (Chips().size() - 1)].chip);
  OpenWriter();
}

void Session::Settings() {
  const char* writer = OpenWriterName();
  if (writer == nullptr) return OpenWriter();
  ByName<QAction>(writer, writer == std::string("Form1") ? "about" : "About")->trigger();
  if (Pick(random_, 0, 2) == 0) {
    ByName<QSlider>("Form2", "HScroll1")->setValue(static_cast<int>(Pick(random_, 1, 10)));
  }
  constexpr std::array kAddresses{"378", "0", "278", "", "3G", "FFFF"};
  const bool elsewhere = Pick(random_, 0, 3) == 0;
  ByName<QLineEdit>("Form2", "Text3")->setText(kAddresses[elsewhere ? Pick(random_, 1, 5) : 0]);
  Click("Form2", "Enter");
  if (ShownWindow("Form2") != nullptr) Click("Form2", "Command1");
}

void Session::Load(const char* window, const char* button) {
  const bool rtd = window != std::string("Form1");
  const bool pair = !rtd && tool_->isp.Model().banks.size() > 1;
  const bool cancel = Pick(random_, 0, 19) == 0;
  robot_.file =
      cancel ? QString() : QString::fromStdString(RandomFile(random_, folder_, pair, rtd));
  Click(window, button);
}

void Session::ProgramVsk() {
  if (Pick(random_, 0, 1) == 0) Load("Form1", "Command1");
  Click("Form1", "Option4");
  const auto size = static_cast<std::size_t>(std::max(tool_->vskImages.CodeMax, 0));
  if (Pick(random_, 0, 2) != 0) AddFaults(random_, 8 + size / 128, size, 4, board_);
  const bool able = Sound(tool_->isp.Model().name) && tool_->isp.IspModeOn &&
                    board_.Chip()->InIspMode() && ImageFits(*tool_, board_);
  BeginRun();
  if (Pick(random_, 0, 3) == 0) {
    ByName<QAction>("Form1", "Program")->trigger();
  } else {
    Click("Form1", "Option8");
    Click("Form1", "Command4");
  }
  EndRun();
  const bool sound = able && !robot_.declined;
  if (!ended_.images.empty()) {
    const auto* status = ByName<QLabel>("Form1", "Label3");
    CompareShown(status->text(), status->palette().color(QPalette::WindowText));
  }
  if (ended_.Verified()) {
    JudgeWriteOk(*tool_, board_, tally_);
    if (!ended_.result.failure.empty()) ++tally_.claimsInRed;
  } else if (sound) {
    ++tally_.soundFailures;
  }
  if (sound) ++tally_.soundRuns;
  if (Pick(random_, 0, 1) == 0) EndFaults();
}

void Session::OtherVskStep() {
  constexpr std::array kOperations{"Option6", "Option7", "Option9", "Option10"};
  BeginRun();
  switch (Pick(random_, 0, 7)) {
    case 0: {
      auto* text = ByName<QPlainTextEdit>("Form1", "Text1");
      QKeyEvent key(QEvent::KeyPress, Pick(random_, 0, 1) == 0 ? Qt::Key_PageDown : Qt::Key_PageUp,
                    Qt::NoModifier);
      QApplication::sendEvent(text, &key);
      break;
    }
    case 1:
      Click("Form1", "Option5");
      break;
    case 2:
      ForChip("Form1", kVskModels[Pick(random_, 0, kVskModels.size() - 1)].name)->click();
      break;
    case 3:
      ByName<QAction>("Form1", "Blank_Entire")->trigger();
      break;
    default:
      Click("Form1", "Option4");
      Click("Form1", kOperations[Pick(random_, 0, 3)]);
      Click("Form1", "Command4");
  }
  EndRun();
}

void Session::RunRtd() {
  const auto size = static_cast<std::size_t>(std::max(tool_->rtdImages.Bank1Max, 0));
  if (Pick(random_, 0, 2) != 0) AddFaults(random_, 30 + size / 40, size, 10, board_);
  // Bank 2 is erased together with bank 1 only.
  const bool erases = tool_->rtdWriter.BankMode != tongxun2120::RtdBankMode::Second &&
                      tool_->rtdImages.Bank1Loaded && tool_->rtdImages.Bank1Max <= 0xFFFF;
  const bool able = erases && Sound("RTD2120");
  BeginRun();
  Click("RTD2120Write", "Run");
  EndRun();
  const bool sound = able && !robot_.declined;
  if (!ended_.result.text.empty()) {
    const auto* status = ByName<QPlainTextEdit>("RTD2120Write", "WriteStatus");
    CompareShown(status->toPlainText().trimmed().replace("\n", "; "),
                 status->palette().color(QPalette::Text));
  }
  const auto claimsBefore = tally_.claims;
  for (const RunImage& image : ended_.images) {
    if (image.Verified()) JudgeCrcOk(image.bank, *tool_, board_, crcRange_, tally_);
  }
  const bool failed = !ended_.result.failure.empty();
  if (failed) tally_.claimsInRed += tally_.claims - claimsBefore;
  const bool imageFault = ended_.result.failure == "Image address error.";
  const bool done = ended_.operation == "Erase" || ended_.Verified();
  if (sound) ++tally_.soundRuns;
  if (sound && !imageFault && (failed || !done)) ++tally_.soundFailures;
  robot_.NoteWindows();
  if (Pick(random_, 0, 1) == 0) EndFaults();
}

void Session::StepRtd() {
  constexpr std::array kBanks{"MainBank", "MainBank", "SecondBank", "BothBank"};
  switch (Pick(random_, 0, 5)) {
    case 0:
      return Load("RTD2120Write", "Com64K");
    case 1:
      return Load("RTD2120Write", "Com64_96K");
    case 2:
      return Click("RTD2120Write", kBanks[Pick(random_, 0, 3)]);
    case 3:
      return Click("RTD2120Write", Pick(random_, 0, 4) == 0 ? "EraseOp" : "AutoOp");
    default:
      return RunRtd();
  }
}

void Session::Step() {
  const char* writer = OpenWriterName();
  const std::size_t choice = Pick(random_, 0, 99);
  if (writer == nullptr || choice < 3) {
    ChangeBoard();
  } else if (choice < 5) {
    Settings();
  } else if (choice < 8) {  // leaves; the next step opens another writer
    const bool vsk = writer == std::string("Form1");
    if (Pick(random_, 0, 1) == 0) {
      ShownWindow(writer)->close();
    } else {
      ByName<QAction>(writer, vsk ? "Exit" : "exit")->trigger();
    }
  } else if (choice < 10) {
    board_.PowerCycle();
    EndFaults();
  } else if (writer != std::string("Form1")) {
    StepRtd();
  } else if (choice < 60) {
    ProgramVsk();
  } else {
    OtherVskStep();
  }
  robot_.NoteWindows();
  if (Pick(random_, 0, 9) == 0) QApplication::processEvents();
}
