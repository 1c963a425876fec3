// A window that tells its owner, once, that it is closing.
#pragma once

#include <QCloseEvent>
#include <functional>
#include <utility>

/// `Window`: what it is besides, a widget.
template <typename Window>
class ClosesOnce : public Window {
 public:
  /// `closed`: the window is closing, by any means.
  explicit ClosesOnce(std::function<void()> closed) : closed_(std::move(closed)) {}

 protected:
  /// Close requests that queued up while an operation held the thread find the window closing
  /// already, and do nothing.
  void Form_Unload() {
    if (std::exchange(closing_, true)) return;
    this->setEnabled(false);
    closed_();
  }

  void closeEvent(QCloseEvent* event) override {
    event->accept();
    Form_Unload();
  }

 private:
  const std::function<void()> closed_;
  bool closing_ = false;
};
