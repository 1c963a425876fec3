#include "widgets/screen_space.h"

#include <QMenuBar>
#include <QScreen>
#include <QShowEvent>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

namespace {

constexpr QMargins kWindowFrame(8, 36, 8, 8);  // what a window manager draws around, at most
constexpr int kGap = 24;                       // between the launcher and a window beside it

/// Opens with what has the focus in view; restored it shows what it showed.
class ScrollArea final : public QScrollArea {
 protected:
  void showEvent(QShowEvent* event) override {
    QScrollArea::showEvent(event);
    if (event->spontaneous()) return;
    if (QWidget* first = window()->focusWidget()) ensureWidgetVisible(first);
  }
};

/// As large as the screen allows, for a content of this size behind scroll bars.
void ResizeScrolled(QWidget& window, const QSize& whole) {
  // A pixel more, for the rounding on a screen of fractional scale.
  const int bar = window.style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 1;
  window.setMaximumSize(whole + QSize(bar, bar));
  window.resize((whole + QSize(bar, 0)).boundedTo(ScreenSpace(window).size()));
}

}  // namespace

QRect ScreenSpace(const QWidget& window) {
  return window.screen()->availableGeometry().marginsRemoved(kWindowFrame);
}

QSize SpaceBeside(const QWidget& launcher) {
  return ScreenSpace(launcher).size() - QSize(launcher.width() + kGap, 0);
}

void PlaceBeside(QWidget& window, QWidget& launcher) {
  const QRect space = ScreenSpace(launcher);
  const QPoint wanted = launcher.geometry().topRight() + QPoint(kGap, 0);
  const auto inside = [](int at, int first, int last) {
    return std::max(first, std::min(at, last));
  };
  const int left = inside(wanted.x(), space.left(), space.right() + 1 - window.width());
  const int top = inside(wanted.y(), space.top(), space.bottom() + 1 - window.height());
  window.move(left - kWindowFrame.left(), top - kWindowFrame.top());
  const int room = left - kGap - launcher.width();
  if (launcher.x() > room) launcher.move(std::max(space.left(), room), launcher.y());
}

QScrollArea* Scrolled(QWidget* content) {
  auto* scroll = new ScrollArea;
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setWidget(content);
  return scroll;
}

QWidget* ClientOf(QWidget& window, const QSize& size) {
  if (size.boundedTo(ScreenSpace(window).size()) == size) {
    window.setFixedSize(size);
    return &window;
  }
  auto* client = new QWidget;
  client->setFixedSize(size);
  auto* rows = new QVBoxLayout(&window);
  rows->setContentsMargins({});
  rows->addWidget(Scrolled(client));
  ResizeScrolled(window, size);
  return client;
}

void ShowWholeOrScrolled(QMainWindow& window, QWidget* client) {
  const QSize whole = client->size() + QSize(0, window.menuBar()->sizeHint().height());
  if (whole.boundedTo(ScreenSpace(window).size()) == whole) {
    window.setCentralWidget(client);
    window.layout()->setSizeConstraint(QLayout::SetFixedSize);
    return;
  }
  window.setCentralWidget(Scrolled(client));
  ResizeScrolled(window, whole);
}
