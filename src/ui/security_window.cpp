#include "ui/security_window.h"

#include <QShortcut>

#include "vsk/entry_parameters.h"
#include "widgets/dialogs.h"
#include "widgets/guarded.h"
#include "widgets/screen_space.h"

namespace {

struct Row {
  const char* label;
  const char* caption;
  const char* range;
};

// A full-width colon (U+FF1A) ends all captions but the first.
constexpr std::array<Row, 6> kRows{{
    {"Label2", "Slave Address:", " (00-FF)"},
    {"Label3", "Nember Of Security Codes：", " (01-04)"},
    {"Label4", "First Security Code：", " (00-FF)"},
    {"Label5", "Second Security Code：", " (00-FF)"},
    {"Label6", "Third Security Code：", " (00-FF)"},
    {"Label7", "Fourth Security Code：", " (00-FF)"},
}};

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
    const Row& row = kRows[i];
    const QString caption = QString::fromUtf8(row.caption);
    const int top = kFirstRowTop + static_cast<int>(i) * kRowStep;
    QLabel* label = AddLabel(client, row.label, caption, {kLabelLeft, top, 0, kBoxHeight});
    const QByteArray box = "Text" + QByteArray::number(static_cast<int>(i) + 1);
    boxes_[i] =
        AddTextBox(client, box.constData(), caption, {kBoxLeft, top, kBoxWidth, kBoxHeight});
    label->setBuddy(boxes_[i]);
    AddLabel(client, "Label8", QLatin1String(row.range), {kRangeLeft, top, 0, kBoxHeight});
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
