#include "session/by_name.h"

#include <QFileInfo>
#include <QLineEdit>

QWidget* ShownWindow(const char* name) {
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // of windows that have closed
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() == QLatin1String(name) && window->isVisible()) return window;
  }
  return nullptr;
}

QString ShownText(const char* window, const char* control) {
  const auto* widget = ByName<QWidget>(window, control);
  return widget->property(widget->inherits("QPlainTextEdit") ? "plainText" : "text").toString();
}

void Choose(QFileDialog& dialog, const QString& file) {
  dialog.setDirectory(QFileInfo(file).path());
  dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(file);
  static_cast<QDialog&>(dialog).accept();
}
