#include "soak/known_texts.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

#include "vsk/vsk_model.h"

namespace {

QRegularExpression AnyOf(const QStringList& patterns) {
  return QRegularExpression(QStringLiteral("\\A(?:") + patterns.join(QLatin1Char('|')) +
                            QStringLiteral(")\\z"));
}

const QString kNumber = QStringLiteral("[1-9A-F][0-9A-F]*|0");

QRegularExpression ModeStatus() {
  return AnyOf({"", "isp mode is already exist", "isp mode is exist", "isp mode is no exist",
                "isp mode is out", "isp mode is not out", "isp mode is not exist",
                "(blankentire|page erase|program|read_code):isp mode is not exist",
                "(blankentire|page erase|read_code):isp mode is  exist",
                "program:isp mode is exist"});
}

QRegularExpression OperationStatus() {
  return AnyOf({"", "Blank ok", "Blank fail", "page erase ok", "page erase fail",
                "finish  ([1-9]?[05]|100)%", "finish", "programcode ok", "programcode fail",
                "Write Ok", "CRC Error", "Page Read fail"});
}

QRegularExpression WriteStatus() {
  const QString hex = "0x(" + kNumber + ")";
  const QString progress = "Program BANK [12]   ([1-9][0-9]?|10[01]) %";
  // A link error while programming has no line end of its own.
  return AnyOf({"", "Erase MCU OK\\.", progress, "(" + progress + ")?MCU link error",
                "(" + progress + "MCU link error)?Calculate CRC   " + hex,
                "Read CRC         " + hex, "CRC OK\\.", "CRC FAIL\\.", "Image address error\\."});
}

QRegularExpression DataDisplay() {
  const QString kind = "(Load Hex File Code|Read Page Code)";
  const QString line = "(000[0-9A-F]+    ([0-9A-F]{2} ){16}\n?)";
  QStringList pages;
  for (const VskModel& model : kVskModels) {
    pages << line + QStringLiteral("{%1}").arg(model.pageBytes / 16);
  }
  return AnyOf({"", " [0-9]+",
                "this is (" + kNumber + ")  page \\(" + kind + "\\)\n(" + pages.join('|') + ")"});
}

QRegularExpression Dialog() {
  return AnyOf({"", "the hexfile is not load", "path or file name error!!!",
                "please input two word HEX number:\\((00-FF|01-04)\\)",
                "please input four word HEX number:\\(0000-FFFF\\)",
                "please input HEX number:\\(0000-FFFF\\)",
                "please input you want read page number:\\(00-FF\\)",
                "please input (start|end) address:\\(0000-FFFF\\)",
                "Please load code in Buffer [12]", "Parallel Address Modify is 0x(" + kNumber + ")",
                "only addresses 0000-7FFF can be page erased(: nothing can be erased at 8000 or "
                "above)?",
                "ISP board number [0-9]+ is in use, and the board table has no complete row.*",
                "\\S+ has changed since it was loaded\\. Program what was loaded\\?",
                "Loaded as it is, but hardly as it was meant\\. Before you program:\n"
                "(\n\\S+\n- [0-9]+ lines? with a wrong checksum[:,][^\n]*\n)+",
                "\\S+: the file does not exist", "\\S+\nline [0-9]+, column [0-9]+: .*"});
}

}  // namespace

bool IsKnownText(const QString& control, const QString& text) {
  const QRegularExpression number = AnyOf({"", kNumber});
  static const QHash<QString, QRegularExpression> known{
      {"Label2", ModeStatus()},
      {"Label3", OperationStatus()},
      {"WriteStatus", WriteStatus()},
      {"Text1", DataDisplay()},
      {"Text3", number},
      {"Text4", AnyOf({"", kNumber, "(" + kNumber + ")  (" + kNumber + ")"})},
      {"Text5", number},
      {"Text6", number},
      {"dialog", Dialog()},
  };
  return known.value(control).match(text).hasMatch();
}
