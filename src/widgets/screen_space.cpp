#include "widgets/screen_space.h"

#include <QLayout>
#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <algorithm>

QRect ScreenSpace(const QWidget& window) {
  constexpr QMargins kWindowFrame(8, 36, 8, 8);  // what a window manager draws around, at most
  return window.screen()->availableGeometry().marginsRemoved(kWindowFrame);
}

void MoveInsideScreen(QWidget& window) {
  const QRect space = ScreenSpace(window);
  const QRect now = window.geometry();
  const int left = std::max(space.left(), std::min(now.left(), space.right() + 1 - now.width()));
  const int top = std::max(space.top(), std::min(now.top(), space.bottom() + 1 - now.height()));
  if (now.topLeft() == QPoint(left, top)) return;
  const QPoint frame = now.topLeft() - window.pos();
  window.move(QPoint(left, top) - frame);
}

void ShowWholeOrScrolled(QMainWindow& window, QWidget* client) {
  const QSize space = ScreenSpace(window).size();
  const QSize whole = client->size() + QSize(0, window.menuBar()->sizeHint().height());
  if (whole.boundedTo(space) == whole) {
    window.setCentralWidget(client);
    window.layout()->setSizeConstraint(QLayout::SetFixedSize);
    return;
  }
  auto* scroll = new QScrollArea;
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidget(client);
  window.setCentralWidget(scroll);
  // A pixel more, for the rounding on a screen of fractional scale.
  const int bar = scroll->style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 1;
  window.setMaximumSize(whole + QSize(bar, bar));
  window.resize((whole + QSize(bar, 0)).boundedTo(space));
}
