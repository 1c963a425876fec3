#include "widgets/thread_hold.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QWindow>
#include <utility>

namespace {

/// What will be asked again once the thread is free: no window may go within an operation. The
/// window system asks the `QWindow`, the program itself the widget.
QList<QPointer<QObject>> askedToClose;

void CloseLater(const QPointer<QObject>& asked) {
  const auto close = [asked] {
    if (auto* window = qobject_cast<QWindow*>(asked)) window->close();
    if (auto* widget = qobject_cast<QWidget*>(asked)) widget->close();
  };
  QMetaObject::invokeMethod(qApp, close, Qt::QueuedConnection);
}

/// Swallows what the operator did, and keeps close requests. Releases pass, so that nothing stays
/// pressed. Timers wait: one that repeats a pressed control must see the release first.
class InputSink final : public QObject {
 public:
  bool eventFilter(QObject* object, QEvent* event) override {
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonDblClick:
      case QEvent::MouseMove:
      case QEvent::Wheel:
      case QEvent::KeyPress:
      case QEvent::Shortcut:
      case QEvent::ShortcutOverride:
      case QEvent::InputMethod:
      case QEvent::ContextMenu:
      case QEvent::TabletPress:
      case QEvent::TabletMove:
      case QEvent::TouchBegin:
      case QEvent::TouchUpdate:
      case QEvent::DragEnter:
      case QEvent::DragMove:
      case QEvent::Drop:
      case QEvent::Timer:
        return true;
      case QEvent::Close:
        closing_ << object;
        return true;
      case QEvent::Quit:
        // The session ends. Qt would ask the windows to close until none is left, for ever here.
        QCoreApplication::exit();
        return true;
      default:
        return false;
    }
  }

  /// What was asked to close.
  const QList<QPointer<QObject>>& Closing() const { return closing_; }

 private:
  QList<QPointer<QObject>> closing_;
};

/// A button that was pressed before must not be clicked by its release, nor by the tenth of a
/// second that a screen reader's press takes.
void LetGoOfButtons() {
  for (QWidget* widget : QApplication::allWidgets()) {
    auto* button = qobject_cast<QAbstractButton*>(widget);
    if (button != nullptr && button->isDown()) button->setDown(false);
  }
}

}  // namespace

void ThreadHold::DiscardInput() {
  ++refusing_;
  LetGoOfButtons();
  InputSink sink;
  QCoreApplication::instance()->installEventFilter(&sink);
  QGuiApplication::sync();  // also what has not reached this program yet
  askedToClose += sink.Closing();
  LetGoOfButtons();
  --refusing_;
}

ThreadHold::ThreadHold() {
  if (depth_++ == 0) QApplication::setOverrideCursor(Qt::WaitCursor);
}

ThreadHold::~ThreadHold() {
  if (depth_ == 1) {
    DiscardInput();
    QApplication::restoreOverrideCursor();
    for (const auto& asked : std::exchange(askedToClose, {})) CloseLater(asked);
  }
  --depth_;
}

ThreadHold::Pause::Pause() : inOperation_(depth_ > 0 && refusing_ == 0) {
  if (!inOperation_) return;
  DiscardInput();
  ++refusing_;
  QApplication::restoreOverrideCursor();
}

ThreadHold::Pause::~Pause() {
  if (!inOperation_) return;
  --refusing_;
  QApplication::setOverrideCursor(Qt::WaitCursor);
}
