#include "widgets/live_text.h"

#include <QAccessible>
#include <utility>

namespace {

void SetBoxText(QLineEdit* box, const QString& text) {
  constexpr int kBorder = 12;  // what the box's frame and margins take of its width
  box->setText(text);
  const bool fits = box->fontMetrics().horizontalAdvance(text) + kBorder <= box->width();
  box->setToolTip(fits ? QString() : text);
}

}  // namespace

void SpokenLabel::Speak(const QString& text) {
  setAccessibleName(text);
  if (std::exchange(speaks_, true)) return;
  const auto speak = [this] {
    speaks_ = false;
    if (accessibleName().isEmpty()) return;
    QAccessibleEvent appeared(this, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&appeared);
  };
  QMetaObject::invokeMethod(this, speak, Qt::QueuedConnection);
}

void ShowLiveText(SpokenLabel* label, const QString& text) {
  label->setText(text);
  label->Speak(text);
}

void ShowLiveText(QLineEdit* box, const QString& text) {
  SetBoxText(box, text);
  box->setCursorPosition(0);
}

void ShowLiveTextEnd(QLineEdit* box, const QString& text) {
  SetBoxText(box, text);
  box->setCursorPosition(static_cast<int>(text.size()));
}

void ShowLiveColour(QWidget* control, const QString& description, bool red) {
  const QColor colour = red ? QColor(255, 0, 0) : QColor(0, 0, 0);
  QPalette palette = control->palette();
  palette.setColor(QPalette::WindowText, colour);
  palette.setColor(QPalette::Text, colour);
  control->setPalette(palette);
  control->setAccessibleDescription(red ? description + QStringLiteral(", in red") : description);
}
