#include "ui/print_surface.h"

#include <QPainter>

void PrintSurface::PrintLine(const QString& line) {
  if (lines_.size() * fontMetrics().height() >= height()) return;
  lines_ << line;
  Announce();
  announcer_->Speak(line);
}

void PrintSurface::Clear() {
  lines_.clear();
  Announce();
}

void PrintSurface::Announce() {
  setAccessibleName(lines_.join(QLatin1Char('\n')));
  update();
}

void PrintSurface::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const int lineHeight = fontMetrics().height();
  int baseline = fontMetrics().ascent();
  for (const QString& line : lines_) {
    painter.drawText(0, baseline, line);
    baseline += lineHeight;
  }
}
