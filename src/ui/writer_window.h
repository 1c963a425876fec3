// What the two writer windows share: a client area of fixed size, and the files for the load
// commands, from the file dialog or dropped.
#pragma once

#include <QApplication>
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
#include "image/writer_view.h"
#include "ui/print_surface.h"
#include "widgets/closes_once.h"
#include "widgets/controls.h"
#include "widgets/dialogs.h"
#include "widgets/guarded.h"
#include "widgets/thread_hold.h"

/// `View`: what the chip family needs of its window, a `WriterView`.
template <typename View>
class WriterWindow : public ClosesOnce<QMainWindow>, protected View {
 public:
  /// `closed`: the window is closing, by any means.
  WriterWindow(const char* name, const QString& title, int widthTwips, int heightTwips,
               FilePlaces& places, std::function<void()> closed)
      : ClosesOnce(std::move(closed)), surface_(new PrintSurface(this)), places_(places) {
    setObjectName(QLatin1String(name));
    setWindowTitle(title);
    setAcceptDrops(true);
    FixClientArea(surface_, widthTwips, heightTwips);
  }

 protected:
  PrintSurface* const surface_;  // the client area

  struct LoadCommand {
    std::function<void(const std::string& file)> run = {};  // none where nothing can be dropped
    loadfile::Formats formats = {};                         // of the files that it takes
  };
  /// For a file that is dropped there, in coordinates of the client area.
  virtual LoadCommand LoadCommandAt(QPoint place) = 0;

  /// An entry that is refused would be the last that Qt tells of the drag: where there is nothing
  /// to drop on, the move that follows at once refuses.
  void dragEnterEvent(QDragEnterEvent* event) override {
    if (CommandFor(event).run) {
      TakeIfFile(event);
    } else {
      event->accept();
    }
  }
  void dragMoveEvent(QDragMoveEvent* event) override { TakeIfFile(event); }
  /// Loads once the drop is over: the program that the file comes from waits for that, and a load
  /// may show a message. Not when the window closes meanwhile.
  void dropEvent(QDropEvent* event) override {
    if (!TakeIfFile(event)) return;
    const QString file = event->mimeData()->urls().first().toLocalFile();
    const auto load = [this, file, run = CommandFor(event).run] {
      if (isEnabled()) run(QDir::toNativeSeparators(file).toStdString());
    };
    QMetaObject::invokeMethod(this, Asked(this, load), Qt::QueuedConnection);
  }

  /// The operator's choice; empty for none.
  std::string ChooseFile(loadfile::Formats formats) {
    QStringList filters;
    for (const loadfile::FormatRow& row : formats) filters << QLatin1String(row.filter);
    return ShowFileDialog(this, places_, filters);
  }
  void Beep() override { QApplication::beep(); }
  void ShowMessage(std::string_view message, std::string_view detail) override {
    ShowMessageBox(this, message, detail);
  }
  bool Confirm(std::string_view question) override { return ShowQuestionBox(this, question); }
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
                       loadfile::IsShown(urls.first().fileName().toStdString(), command.formats);
    event->setAccepted(taken);
    if (!taken) return false;
    event->setDropAction(Qt::CopyAction);
    return true;
  }

  FilePlaces& places_;
};
