#include "widgets/problem_box.h"

#include <QCoreApplication>
#include <QMessageBox>

#include "widgets/dialogs.h"

namespace {

void ShowProblem(const std::string& message) {
  auto* box = new QMessageBox(QMessageBox::Warning, QStringLiteral("isp-writer"), TextOf(message),
                              QMessageBox::Ok);
  box->setObjectName(QStringLiteral("PortProblem"));
  MakeReadable(*box);
  KeepWide(*box);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setModal(false);  // every message box starts out modal
  box->show();
}

}  // namespace

void PostProblem(const std::string& message) {
  QMetaObject::invokeMethod(
      qApp, [message] { ShowProblem(message); }, Qt::QueuedConnection);
}
