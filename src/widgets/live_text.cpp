#include "widgets/live_text.h"

#include <QTextDocument>
#include <utility>

namespace {

void SetBoxText(QLineEdit* box, const QString& text) {
  constexpr int kBorder = 12;  // what the box's frame and margins take of its width
  box->setText(text);
  const bool fits = box->fontMetrics().horizontalAdvance(text) + kBorder <= box->width();
  box->setToolTip(fits ? QString() : PlainToolTip(text));
}

}  // namespace

QString PlainToolTip(const QString& text) {
  return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

Announcer::Announcer(QWidget* control) : QWidget(control->parentWidget()), control_(control) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  resize(1, 1);
  hide();
}

void Announcer::Speak(const QString& text) {
  text_ = text;
  if (std::exchange(speaks_, true)) return;
  QMetaObject::invokeMethod(
      this, [this] { Appear(); }, Qt::QueuedConnection);
}

void Announcer::Appear() {
  speaks_ = false;
  hide();
  if (text_.isEmpty()) return;
  setAccessibleName(text_);
  setAccessibleDescription(control_->accessibleDescription());
  show();
}

void SpokenLabel::ShowText(const QString& text) {
  setText(text);
  setAccessibleName(text);
  announcer_->Speak(text);
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
