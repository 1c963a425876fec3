#include "widgets/dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QUrl>

#include "platform/files.h"
#include "widgets/thread_hold.h"

QString TextOf(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

namespace {

/// The dialog's own places, then those of the program that exist; returns those that were added.
QList<QUrl> AddToSideBar(QFileDialog& dialog, const FilePlaces& places) {
  QList<QUrl> urls = dialog.sidebarUrls();
  const auto own = urls.size();
  for (const QString& folder : {TextOf(PathText(places.programFolder)),
                                TextOf(PathText(places.samples)), places.lastUsed}) {
    const QUrl url = QUrl::fromLocalFile(QDir(folder).absolutePath());
    if (!folder.isEmpty() && QDir(folder).exists() && !urls.contains(url)) urls << url;
  }
  dialog.setSidebarUrls(urls);
  return urls.mid(own);
}

/// The dialog keeps its side bar for all programs and for good when it ends.
void TakeFromSideBar(QFileDialog& dialog, const QList<QUrl>& added) {
  QList<QUrl> urls = dialog.sidebarUrls();
  for (const QUrl& url : added) urls.removeAll(url);
  dialog.setSidebarUrls(urls);
}

/// Plain text that can be selected and copied.
void MakeReadable(QMessageBox& box) {
  box.setWindowTitle(QStringLiteral("isp-writer"));
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  // Qt sets these for the text only.
  auto* detail = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
  if (detail == nullptr) return;
  detail->setTextFormat(Qt::PlainText);
  detail->setTextInteractionFlags(box.textInteractionFlags());
}

/// Room for a path on one line.
void KeepWide(QMessageBox& box) {
  constexpr int kWidth = 460;
  auto* rows = static_cast<QGridLayout*>(box.layout());
  rows->addItem(new QSpacerItem(kWidth, 0), rows->rowCount(), 0, 1, rows->columnCount());
}

/// The button that was pressed; Cancel is the default where there is one. Outside an operation too
/// a screen reader's press is refused meanwhile: it could close the window that the box belongs to.
int Answer(QMessageBox& box) {
  const ThreadHold hold;
  const ThreadHold::Pause pause;
  box.setDefaultButton(QMessageBox::Cancel);
  return box.exec();
}

void PostBox(const char* name, const std::string& message) {
  const auto show = [name, message] {
    auto* box = new QMessageBox(QMessageBox::Warning, {}, TextOf(message), QMessageBox::Ok);
    box->setObjectName(QLatin1String(name));
    MakeReadable(*box);
    KeepWide(*box);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setModal(false);  // every message box starts out modal
    box->show();
  };
  QMetaObject::invokeMethod(qApp, show, Qt::QueuedConnection);
}

}  // namespace

void ShowMessageBox(QWidget* window, std::string_view message, std::string_view detail) {
  const auto icon = detail.empty() ? QMessageBox::Information : QMessageBox::Warning;
  QMessageBox box(icon, {}, TextOf(message), QMessageBox::Ok, window);
  box.setInformativeText(TextOf(detail));
  MakeReadable(box);
  if (!detail.empty()) KeepWide(box);
  Answer(box);
}

void ShowFailureBox(QWidget* window, std::string_view reason) {
  QMessageBox box(QMessageBox::Critical, {}, TextOf(reason), QMessageBox::Ok, window);
  MakeReadable(box);
  KeepWide(box);
  Answer(box);
}

bool ShowQuestionBox(QWidget* window, std::string_view message) {
  QMessageBox box(QMessageBox::Warning, {}, TextOf(message), QMessageBox::Ok | QMessageBox::Cancel,
                  window);
  MakeReadable(box);
  return Answer(box) == QMessageBox::Ok;
}

void PostProblem(const std::string& message) { PostBox("PortProblem", message); }

void PostFileNotes(const std::string& notes) { PostBox("FileNotes", notes); }

std::string ShowInputBox(QWidget* window, std::string_view prompt, std::string_view title,
                         std::string_view answer) {
  QInputDialog box(window);
  box.setWindowTitle(TextOf(title));
  box.setLabelText(TextOf(prompt));
  box.setTextValue(TextOf(answer));
  const ThreadHold::Pause pause;
  return box.exec() == QDialog::Accepted ? box.textValue().toStdString() : std::string();
}

std::string ShowFileDialog(QWidget* window, FilePlaces& places, const QStringList& filters) {
  QFileDialog dialog(window, QString(), TextOf(PathText(places.programFolder)));
  dialog.setObjectName(QStringLiteral("CommonDialog1"));
  dialog.setFileMode(QFileDialog::AnyFile);  // a missing file is the reader's to judge
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setNameFilters(filters);
  const QList<QUrl> added = AddToSideBar(dialog, places);
  const ThreadHold::Pause pause;
  const bool chosen = dialog.exec() == QDialog::Accepted;
  TakeFromSideBar(dialog, added);
  if (!chosen) return {};
  const QString file = dialog.selectedFiles().value(0);
  places.lastUsed = QFileInfo(file).absolutePath();
  return QDir::toNativeSeparators(file).toStdString();
}
