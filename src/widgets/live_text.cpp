#include "widgets/live_text.h"

#include <QAccessible>

namespace {

void AnnounceValue(QWidget* control, const QString& text) {
  QAccessibleValueChangeEvent changed(control, text);
  QAccessible::updateAccessibility(&changed);
}

void SetBoxText(QLineEdit* box, const QString& text) {
  constexpr int kBorder = 12;  // what the box's frame and margins take of its width
  box->setText(text);
  const bool fits = box->fontMetrics().horizontalAdvance(text) + kBorder <= box->width();
  box->setToolTip(fits ? QString() : text);
}

}  // namespace

void ShowLiveText(QLabel* label, const QString& text) {
  label->setText(text);
  label->setAccessibleName(text);
}

void ShowLiveText(QLineEdit* box, const QString& text) {
  SetBoxText(box, text);
  box->setCursorPosition(0);
  AnnounceValue(box, text);
}

void ShowLiveTextEnd(QLineEdit* box, const QString& text) {
  SetBoxText(box, text);
  box->setCursorPosition(static_cast<int>(text.size()));
  AnnounceValue(box, text);
}

void ShowLiveText(QPlainTextEdit* box, const QString& text) {
  box->setPlainText(text);
  AnnounceValue(box, text);
}

void ShowLiveColour(QWidget* control, const QString& description, bool red) {
  const QColor colour = red ? QColor(255, 0, 0) : QColor(0, 0, 0);
  QPalette palette = control->palette();
  palette.setColor(QPalette::WindowText, colour);
  palette.setColor(QPalette::Text, colour);
  control->setPalette(palette);
  control->setAccessibleDescription(red ? description + QStringLiteral(", in red") : description);
}
