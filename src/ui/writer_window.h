// What the two writer windows share: a client area of fixed size, the files for the load commands,
// from the file dialog or dropped, and a closing that happens once.
#pragma once

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDropEvent>
#include <QMainWindow>
#include <QMimeData>
#include <QUrl>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "image/readers.h"
#include "ui/print_surface.h"
#include "widgets/controls.h"
#include "widgets/dialogs.h"
#include "widgets/guarded.h"
#include "widgets/operation.h"
#include "widgets/problem_box.h"
#include "widgets/screen_space.h"

/// `LoadView`: the view of the window's load commands, a `FileView`.
template <typename LoadView>
class WriterWindow : public QMainWindow, protected LoadView {
 public:
  /// `closed`: the window is closing, by any means.
  WriterWindow(const char* name, const QString& title, int widthTwips, int heightTwips,
               FilePlaces& places, std::function<void()> closed)
      : surface_(new PrintSurface(this)), places_(places), closed_(std::move(closed)) {
    setObjectName(QLatin1String(name));
    setWindowTitle(title);
    setAcceptDrops(true);
    FixClientArea(surface_, widthTwips, heightTwips);
  }

 protected:
  PrintSurface* const surface_;  // the client area

  struct LoadCommand {
    std::function<void()> run = {};  // none where nothing can be dropped
    std::string_view filters = {};   // of the files that it takes
  };
  /// For a file that is dropped there, in coordinates of the client area.
  virtual LoadCommand LoadCommandAt(QPoint place) = 0;

  /// By any means. Close requests that queued up while an operation held the thread find the window
  /// closing already, and do nothing.
  void Form_Unload() {
    if (std::exchange(closing_, true)) return;
    setEnabled(false);
    closed_();
  }

  void closeEvent(QCloseEvent* event) override {
    event->accept();
    Form_Unload();
  }

  void dragEnterEvent(QDragEnterEvent* event) override { TakeIfFile(event); }
  void dragMoveEvent(QDragMoveEvent* event) override { TakeIfFile(event); }
  void dropEvent(QDropEvent* event) override {
    if (!TakeIfFile(event)) return;
    dropped_ = QDir::toNativeSeparators(event->mimeData()->urls().first().toLocalFile());
    Guarded(this, CommandFor(event).run)();
    dropped_.clear();
  }

  /// The file that was dropped, else the operator's choice.
  std::string ChooseFile(std::string_view filters) override {
    if (!dropped_.isEmpty()) return dropped_.toStdString();
    return ShowFileDialog(this, places_, filters);
  }
  void Beep() override { QApplication::beep(); }
  void ShowMessage(std::string_view message, std::string_view detail) override {
    ShowMessageBox(this, message, detail);
  }
  void ShowNotes(std::string_view notes) override { PostFileNotes(std::string(notes)); }
  void PrintLine(std::string_view line) override { surface_->PrintLine(TextOf(line)); }
  void ClearPrintedLines() override { surface_->Clear(); }

 private:
  LoadCommand CommandFor(const QDropEvent* event) {
    return LoadCommandAt(surface_->mapFrom(this, event->position().toPoint()));
  }
  /// One file, of a name that the file dialog would show; the cursor tells.
  bool TakeIfFile(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    const bool oneFile = urls.size() == 1 && urls.first().isLocalFile();
    const LoadCommand command = CommandFor(event);
    const bool taken = oneFile && command.run &&
                       loadfile::IsShown(urls.first().fileName().toStdString(), command.filters);
    event->setAccepted(taken);
    if (!taken) return false;
    event->setDropAction(Qt::CopyAction);
    return true;
  }

  FilePlaces& places_;
  const std::function<void()> closed_;
  QString dropped_;  // while its load command runs
  bool closing_ = false;
};
