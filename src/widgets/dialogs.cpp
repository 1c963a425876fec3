#include "widgets/dialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

#include "platform/files.h"

QString TextOf(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void ShowMessageBox(QWidget* window, std::string_view message, std::string_view detail) {
  QMessageBox box(QMessageBox::NoIcon, QStringLiteral("isp-writer"), TextOf(message),
                  QMessageBox::Ok, window);
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(TextOf(detail));
  box.exec();
}

bool ShowQuestionBox(QWidget* window, std::string_view message) {
  QMessageBox box(QMessageBox::Warning, QStringLiteral("isp-writer"), TextOf(message),
                  QMessageBox::Ok | QMessageBox::Cancel, window);
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(QMessageBox::Cancel);
  return box.exec() == QMessageBox::Ok;
}

std::string ShowInputBox(QWidget* window, std::string_view prompt, std::string_view title,
                         std::string_view answer) {
  QInputDialog box(window);
  box.setWindowTitle(TextOf(title));
  box.setLabelText(TextOf(prompt));
  box.setTextValue(TextOf(answer));
  return box.exec() == QDialog::Accepted ? box.textValue().toStdString() : std::string();
}

std::string ShowFileDialog(QWidget* window, const std::filesystem::path& folder,
                           std::string_view filters) {
  const QStringList parts = TextOf(filters).split(QLatin1Char('|'));
  QStringList descriptions;  // each names its pattern in parentheses, which is what Qt reads
  for (qsizetype i = 0; i < parts.size(); i += 2) descriptions << parts[i];

  QFileDialog dialog(window, QString(), TextOf(PathText(folder)));
  dialog.setObjectName(QStringLiteral("CommonDialog1"));
  dialog.setFileMode(QFileDialog::AnyFile);  // a missing file is the reader's to judge
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setNameFilters(descriptions);
  if (dialog.exec() != QDialog::Accepted) return {};
  return QDir::toNativeSeparators(dialog.selectedFiles().value(0)).toStdString();
}
