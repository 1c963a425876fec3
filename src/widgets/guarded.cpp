#include "widgets/guarded.h"

#include <QMessageBox>

void ReportFailure(QWidget* window, const char* reason) {
  QMessageBox::critical(window, QStringLiteral("isp-writer"), QString::fromUtf8(reason));
}
