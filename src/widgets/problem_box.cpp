#include "widgets/problem_box.h"

#include <QCoreApplication>
#include <QMessageBox>

#include "widgets/dialogs.h"

namespace {

void ShowBox(const char* name, const std::string& message) {
  auto* box = new QMessageBox(QMessageBox::Warning, QStringLiteral("isp-writer"), TextOf(message),
                              QMessageBox::Ok);
  box->setObjectName(QLatin1String(name));
  MakeReadable(*box);
  KeepWide(*box);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setModal(false);  // every message box starts out modal
  box->show();
}

void PostBox(const char* name, const std::string& message) {
  QMetaObject::invokeMethod(
      qApp, [name, message] { ShowBox(name, message); }, Qt::QueuedConnection);
}

}  // namespace

void PostProblem(const std::string& message) { PostBox("PortProblem", message); }

void PostFileNotes(const std::string& notes) { PostBox("FileNotes", notes); }
