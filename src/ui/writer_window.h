// What the two writer windows share: a client area of fixed size, the file dialog of the load
// commands, and a closing that happens once.
#pragma once

#include <QApplication>
#include <QCloseEvent>
#include <QLayout>
#include <QMainWindow>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include "ui/print_surface.h"
#include "widgets/controls.h"
#include "widgets/dialogs.h"

/// `LoadView`: the view of the window's load commands, a `FileView`.
template <typename LoadView>
class WriterWindow : public QMainWindow, protected LoadView {
 public:
  /// `programFolder`: where the file dialog begins. `closed`: the window is closing, by any means.
  WriterWindow(const char* name, const QString& title, int widthTwips, int heightTwips,
               std::filesystem::path programFolder, std::function<void()> closed)
      : surface_(new PrintSurface(this)),
        programFolder_(std::move(programFolder)),
        closed_(std::move(closed)) {
    setObjectName(QLatin1String(name));
    setWindowTitle(title);
    FixClientArea(surface_, widthTwips, heightTwips);
    setCentralWidget(surface_);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
  }

 protected:
  PrintSurface* const surface_;  // the client area

  /// Clicks and close requests that queued up while an operation held the thread find the window
  /// closing already, and do nothing.
  void closeEvent(QCloseEvent* event) override {
    event->accept();
    if (std::exchange(closing_, true)) return;
    setEnabled(false);
    closed_();
  }

  std::string ChooseFile(std::string_view filters) override {
    return ShowFileDialog(this, programFolder_, filters);
  }
  void Beep() override { QApplication::beep(); }
  void ShowMessage(std::string_view message, std::string_view detail) override {
    ShowMessageBox(this, message, detail);
  }
  void PrintLine(std::string_view line) override { surface_->PrintLine(TextOf(line)); }
  void ClearPrintedLines() override { surface_->Clear(); }

 private:
  const std::filesystem::path programFolder_;
  const std::function<void()> closed_;
  bool closing_ = false;
};
