// The windows on a screen that has no space for all of them.
#include "ui/window_test.h"

class SmallScreenTest : public WindowTest {
  Q_OBJECT

 private slots:
  void initTestCase() { QCOMPARE(QGuiApplication::primaryScreen()->size(), QSize(400, 400)); }

  void theyScrollToTheLastControlAndTheFirstHasTheFocus() {
    struct Row {
      const char* launcherButton;
      NamedWindow window;
      const char *first, *last;
    };
    for (const Row& row : {Row{"Command1", kVskWriter, "Command1", "Label2"},
                           Row{"Command3", kRtdWriter, "Com64K", "Run"},
                           Row{"Command1", kSettings, "Text3", "Text3"}}) {
      StartWriter(row.launcherButton, simulator::ConnectedChip::None);
      if (row.window.name == kSettings.name) kVskWriter.Choose("about");
      const QWidget* shown = row.window.Shown();
      QVERIFY2(shown->screen()->availableGeometry().contains(shown->frameGeometry()),
               row.window.name);
      row.window.Activate();
      const auto* first = row.window.Find(row.first);
      QCOMPARE(shown->focusWidget(), first);  // not the scroll area
      QVERIFY2(first->visibleRegion().boundingRect() == first->rect(), row.window.name);
      const auto* scroll = shown->findChild<QScrollArea*>();
      QVERIFY2(scroll != nullptr, row.window.name);
      const auto* last = row.window.Find(row.last);
      for (auto* bar : {scroll->horizontalScrollBar(), scroll->verticalScrollBar()}) {
        bar->setValue(bar->maximum());
      }
      QVERIFY2(last->visibleRegion().boundingRect() == last->rect(), row.window.name);
      for (const auto state : {Qt::WindowMinimized, Qt::WindowNoState}) {
        QWindowSystemInterface::handleWindowStateChanged(shown->windowHandle(), state);
        QApplication::processEvents();
      }
      QVERIFY2(last->visibleRegion().boundingRect() == last->rect(), row.window.name);
    }
  }
};

int ui_small_screen_test(int count, char** arguments) {
  // Read when the application begins: Qt's offscreen screen has 800 x 800 pixels, 400 x 400 then.
  qputenv("QT_SCALE_FACTOR", "2");
  return RunWindowTest<SmallScreenTest>(count, arguments);
}
#include "small_screen_test.moc"
