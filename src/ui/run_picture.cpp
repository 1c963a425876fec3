#include "ui/run_picture.h"

#include <QPainter>
#include <QPixmap>
#include <array>

QIcon RunPicture() {
  constexpr int kSize = 64;  // drawn large, so that it stays sharp on a scaled screen
  QPixmap picture(kSize, kSize);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);

  painter.setBrush(QColor(150, 150, 155));
  for (int pin = 0; pin < 4; ++pin) {
    painter.drawRect(24, 18 + 11 * pin, 38, 5);
  }
  painter.setBrush(QColor(60, 64, 72));
  painter.drawRoundedRect(QRect(30, 10, 26, 50), 3, 3);

  const std::array<QPoint, 7> arrow{QPoint(2, 28),  QPoint(22, 28), QPoint(22, 18), QPoint(42, 35),
                                    QPoint(22, 52), QPoint(22, 42), QPoint(2, 42)};
  painter.setPen(QPen(Qt::white, 2));
  painter.setBrush(QColor(30, 140, 60));
  painter.drawPolygon(arrow.data(), static_cast<int>(arrow.size()));
  painter.end();
  return QIcon(picture);
}
