#include "widgets/operation.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <utility>

namespace {

/// Swallows what the operator did. Releases pass, so that nothing stays pressed. Timers wait: one
/// that repeats a pressed control must see the release first.
class InputSink final : public QObject {
 public:
  bool eventFilter(QObject*, QEvent* event) override {
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
      default:
        return false;
    }
  }
};

/// A button that was pressed before the operation must not be clicked by its release.
void LetGoOfButtons() {
  for (QWidget* widget : QApplication::allWidgets()) {
    auto* button = qobject_cast<QAbstractButton*>(widget);
    if (button != nullptr && button->isDown()) button->setDown(false);
  }
}

void DiscardInput() {
  LetGoOfButtons();
  InputSink sink;
  QCoreApplication::instance()->installEventFilter(&sink);
  QCoreApplication::processEvents();
}

}  // namespace

Operation::Operation() {
  if (depth_++ == 0) QApplication::setOverrideCursor(Qt::WaitCursor);
}

Operation::~Operation() {
  if (depth_ == 1) {
    DiscardInput();
    QApplication::restoreOverrideCursor();
  }
  --depth_;
}

// A dialog has an event loop of its own, in which a handler may begin an operation of its own.
Operation::Pause::Pause() : depth_(std::exchange(Operation::depth_, 0)) {
  if (depth_ == 0) return;
  DiscardInput();
  QApplication::restoreOverrideCursor();
}

Operation::Pause::~Pause() {
  Operation::depth_ = depth_;
  if (depth_ > 0) QApplication::setOverrideCursor(Qt::WaitCursor);
}
