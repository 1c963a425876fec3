#include "ui/security_window.h"

#include <QShortcut>

#include "vsk/entry_parameters.h"
#include "widgets/dialogs.h"
#include "widgets/guarded.h"
#include "widgets/screen_space.h"

namespace {

struct Row {
  const char* label;
  QString caption;
  QString range;
};

// A full-width colon (U+FF1A) ends all captions but the first.
const std::array<Row, 6>& Rows() {
  static const std::array<Row, 6> rows{{
      {"Label2", QStringLiteral("Slave Address:"), QStringLiteral(" (00-FF)")},
      {"Label3", QStringLiteral("Nember Of Security Codes："), QStringLiteral(" (01-04)")},
      {"Label4", QStringLiteral("First Security Code："), QStringLiteral(" (00-FF)")},
      {"Label5", QStringLiteral("Second Security Code："), QStringLiteral(" (00-FF)")},
      {"Label6", QStringLiteral("Third Security Code："), QStringLiteral(" (00-FF)")},
      {"Label7", QStringLiteral("Fourth Security Code："), QStringLiteral(" (00-FF)")},
  }};
  return rows;
}

constexpr int kFirstRowTop = 960;  // twips, as all below
constexpr int kRowStep = 600;
constexpr int kLabelLeft = 240;
constexpr int kBoxLeft = 2760;
constexpr int kBoxWidth = 1455;
constexpr int kBoxHeight = 375;
constexpr int kRangeLeft = 4320;

}  // namespace

Form3::Form3(std::filesystem::path parameterFile) : parameterFile_(std::move(parameterFile)) {
  setObjectName(QStringLiteral("Form3"));
  setWindowTitle(QStringLiteral("Form3"));
  QWidget* client = ClientOf(*this, {PixelsOf(5715), PixelsOf(5265)});

  QLabel* heading =
      AddLabel(client, "Label1", QStringLiteral("Security Check"), {0, 300, 5715, 375});
  heading->setAlignment(Qt::AlignCenter);
  for (std::size_t i = 0; i < boxes_.size(); ++i) {
    const Row& row = Rows()[i];
    const int top = kFirstRowTop + static_cast<int>(i) * kRowStep;
    QLabel* label = AddLabel(client, row.label, row.caption, {kLabelLeft, top, 0, kBoxHeight});
    const QByteArray box = "Text" + QByteArray::number(static_cast<int>(i) + 1);
    boxes_[i] =
        AddTextBox(client, box.constData(), row.caption, {kBoxLeft, top, kBoxWidth, kBoxHeight});
    label->setBuddy(boxes_[i]);
    AddLabel(client, "Label8", row.range, {kRangeLeft, top, 0, kBoxHeight});
  }

  checkButton_ = AddButton(client, "Command1", QStringLiteral("Check"), {1320, 4680});
  exitButton_ = AddButton(client, "Command2", QStringLiteral("Exit"), {3360, 4680});
  boxes_[0]->setFocus();
  Connect();
}

void Form3::Connect() {
  connect(checkButton_, &QPushButton::clicked, this, Asked(this, &Form3::Command1_Click));
  connect(exitButton_, &QPushButton::clicked, this, Asked(this, &Form3::Command2_Click));
  for (const QLineEdit* box : boxes_) {
    connect(box, &QLineEdit::returnPressed, this, Guarded(this, &Form3::Command1_Click));
  }
  const auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
  connect(escape, &QShortcut::activated, this, Guarded(this, &Form3::Command2_Click));
}

void Form3::Command2_Click() { close(); }

void Form3::Command1_Click() {
  fileop::SecurityEntry entry{.address = boxes_[0]->text().toStdString(),
                              .count = boxes_[1]->text().toStdString(),
                              .codes = {}};
  for (std::size_t i = 0; i < entry.codes.size(); ++i) {
    entry.codes[i] = boxes_[2 + i]->text().toStdString();
  }
  const Status check = fileop::CheckSecurityEntry(entry, parameterFile_);
  if (!check.Reason().empty()) ShowMessageBox(this, check.Reason(), check.Cause());
  if (check.Ok()) close();
}
