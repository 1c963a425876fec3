#include "session/demo_session.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QTextStream>
#include <algorithm>
#include <vector>

#include "image/intel_hex.h"
#include "platform/files.h"
#include "session/by_name.h"
#include "ui/security_window.h"

namespace {

constexpr int kLongestDialog_ms = 20'000;  // the session answers its own within milliseconds

QTextStream& Out() {
  static QTextStream out(stdout);
  return out;
}

}  // namespace

DemoSession::DemoSession(simulator::SimulatedBoard& board, QWidget& launcher,
                         simulator::BoardWindow& boardWindow, const QString& folder,
                         const QString& samples)
    : board_(board),
      launcher_(launcher),
      boardWindow_(boardWindow),
      folder_(folder),
      samples_(QDir(samples).absolutePath()) {}

bool DemoSession::Play() {
  // The session answers Qt's own file dialog, not the system's.
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  QApplication::setCursorFlashTime(0);  // so that a screenshot does not depend on its moment
  QDir().mkpath(folder_);
  Picture(&launcher_, "launcher");
  EnterSecurityCodes();
  ProgramVsk830();
  LookAtSettings();
  ProgramVsk630();
  WriteRtd2120();
  Out() << (allHeld_ ? "The session went as it should." : "The session FAILED.") << Qt::endl;
  return allHeld_;
}

/// As at a first start, into a file of the session's own.
void DemoSession::EnterSecurityCodes() {
  const auto file = PathOf((folder_ + QStringLiteral("/security.cod")).toStdString());
  Form3 window(file);
  window.show();
  Type(window, "Text1", "94");
  Type(window, "Text2", "02");
  Type(window, "Text3", "5A");
  Type(window, "Text4", "A5");
  Picture(&window, "security-check");
  Press("Form3", "Command1");
  Check(!window.isVisible() && *ReadFile(file, 16) == "\x94\x02\x5A\xA5",
        QStringLiteral("the codes are kept, the window closes"));
}

/// The window opens with another speed than it shows, and so calibrates: this takes a second.
void DemoSession::LookAtSettings() {
  ByName<QAction>("Form1", "about")->trigger();
  Expect("Form2", "Text3", QStringLiteral("378"));
  Picture(ShownWindow("Form2"), "settings");
  Press("Form2", "Command1");
}

void DemoSession::ProgramVsk830() {
  const QString image = Sample("vsk830/thermostat.hex");
  Press("Main", "Command1");
  LoadFile("Form1", "Command1", "Text2", image);
  Check(ShownText("Form1", "Text5") != QLatin1String(""), QStringLiteral("\"S/W CRC\" is shown"));
  Press("Form1", "Option4");
  Expect("Form1", "Label2", QStringLiteral("isp mode is exist"));
  Press("Form1", "Option10");
  AnswerDialog<QDialog>([](QDialog& dialog) { dialog.accept(); });  // the page that it offers
  Press("Form1", "Command4");
  const QString page = ShownText("Form1", "Text1");
  Check(page.startsWith(QStringLiteral("this is 0  page (Load Hex File Code)\n0000    02 ")),
        QStringLiteral("a page of the image is shown"));
  Picture(ShownWindow("Form1"), "image-loaded");
  Press("Form1", "Option8");
  RunToWriteOk();
  ExpectFlash(board_.vsk830.Bank(0), image);
  boardWindow_.Refresh();
  Picture(ShownWindow("Form1"), "programmed");
  Picture(&boardWindow_, "simulated-board");
}

void DemoSession::ProgramVsk630() {
  const QString bank0 = Sample("vsk630/kiosk.H00");
  Plug(QStringLiteral("VSK630"));
  Press("Main", "Command2");
  LoadFile("Form1", "Command1", "Text2", bank0);
  Press("Form1", "Option4");
  Expect("Form1", "Label2", QStringLiteral("isp mode is exist"));
  RunToWriteOk();
  ExpectFlash(board_.vsk630.Bank(0), bank0);
  ExpectFlash(board_.vsk630.Bank(1), Sample("vsk630/kiosk.H01"));
  boardWindow_.Refresh();
  Picture(ShownWindow("Form1"), "two-banks-programmed");
  Picture(&boardWindow_, "simulated-vsk630");
}

void DemoSession::RunToWriteOk() {
  Press("Form1", "Command4");
  Expect("Form1", "Label3", QStringLiteral("Write Ok"));
  Expect("Form1", "Label2", QStringLiteral("isp mode is out"));
  Expect("Form1", "Text6", ShownText("Form1", "Text5"));
}

void DemoSession::WriteRtd2120() {
  const QString bank1 = Sample("rtd2120/panel-bank1.hex");
  const QString bank2 = Sample("rtd2120/panel-bank2.hex");
  Plug(QStringLiteral("RTD2120"));
  Press("Main", "Command3");
  LoadFile("RTD2120Write", "Com64K", "Bank1File", bank1);
  LoadFile("RTD2120Write", "Com64_96K", "Bank2File", bank2);
  Press("RTD2120Write", "BothBank");
  Press("RTD2120Write", "AutoOp");
  Press("RTD2120Write", "Run");
  const QString status = ShownText("RTD2120Write", "WriteStatus");
  Check(status.endsWith(QStringLiteral("CRC OK.\n")),
        QStringLiteral("RTD2120Write WriteStatus shows:\n") + status);
  ExpectFlash(board_.rtd2120.Bank(0), bank1);
  ExpectFlash(board_.rtd2120.Bank(1), bank2);
  boardWindow_.Refresh();
  Picture(ShownWindow("RTD2120Write"), "rtd2120-written");
  Picture(&boardWindow_, "simulated-rtd2120");

  Press("RTD2120Write", "EraseOp");
  Press("RTD2120Write", "Run");
  Expect("RTD2120Write", "WriteStatus", QStringLiteral("Erase MCU OK.\n"));
  const auto& erased = board_.rtd2120.Bank(0).Cells();
  Check(std::count(erased.begin(), erased.end(), 0xFF) == std::ssize(erased),
        QStringLiteral("the chip's flash is erased"));
}

QString DemoSession::Sample(const char* file) const {
  return QDir::toNativeSeparators(samples_ + QLatin1Char('/') + QLatin1String(file));
}

void DemoSession::Plug(const QString& chip) {
  Out() << "Simulated board: plug in " << chip << Qt::endl;
  boardWindow_.findChild<QComboBox*>(QStringLiteral("Chip"))->setCurrentText(chip);
}

void DemoSession::Press(const char* window, const char* control) {
  auto* button = ByName<QAbstractButton>(window, control);
  Out() << window << ": press \"" << button->text() << '"' << Qt::endl;
  QTimer unexpected;
  unexpected.callOnTimeout([this] { RefuseDialog(); });
  unexpected.start(kLongestDialog_ms);
  button->click();
  QApplication::processEvents();
}

/// Nobody answers a dialog that the session does not expect: it would wait for ever.
void DemoSession::RefuseDialog() {
  auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
  if (dialog == nullptr) return;
  Check(false,
        QStringLiteral("a dialog that nobody expects: ") + dialog->property("text").toString());
  dialog->reject();
}

void DemoSession::Type(QWidget& window, const char* control, const char* text) {
  Out() << window.objectName() << ": type \"" << text << '"' << Qt::endl;
  window.findChild<QLineEdit*>(QLatin1String(control))->setText(QLatin1String(text));
}

void DemoSession::LoadFile(const char* window, const char* button, const char* box,
                           const QString& file) {
  AnswerDialog<QFileDialog>([file](QFileDialog& dialog) { Choose(dialog, file); });
  Press(window, button);
  Expect(window, box, file);
}

void DemoSession::Expect(const char* window, const char* control, const QString& text) {
  const QString shown = ShownText(window, control);
  Check(shown == text, QStringLiteral("%1 %2 shows \"%3\"")
                           .arg(QLatin1String(window), QLatin1String(control), shown));
}

void DemoSession::ExpectFlash(const simulator::Flash& flash, const QString& hexFile) {
  const Result<std::string> file = ReadFile(PathOf(hexFile.toStdString()), 1U << 20);
  std::vector<std::uint8_t> image(flash.Cells().size());
  const auto bytes = loadfile::StoreHex(*file, image) + 1;
  Check(std::equal(image.begin(), image.begin() + bytes, flash.Cells().begin()),
        QStringLiteral("the chip's flash equals the image of %1 bytes").arg(bytes));
}

void DemoSession::Picture(QWidget* window, const char* name) {
  const QString file = QStringLiteral("%1/%2-%3.png")
                           .arg(folder_)
                           .arg(++pictures_, 2, 10, QLatin1Char('0'))
                           .arg(QLatin1String(name));
  QApplication::processEvents();
  Check(window->grab().save(file), QStringLiteral("screenshot ") + file);
}

void DemoSession::Check(bool holds, const QString& what) {
  Out() << (holds ? "  ok: " : "  WRONG: ") << what << Qt::endl;
  allHeld_ = allHeld_ && holds;
}
