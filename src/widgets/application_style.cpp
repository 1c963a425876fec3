#include "widgets/application_style.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QDir>
#include <QIconEngine>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QProxyStyle>
#include <QStyleOption>
#include <utility>

#include "widgets/live_text.h"

namespace {

constexpr int kFontPixels = 12;  // 9 points at 96 dpi

/// Fusion with option marks small enough for the given heights.
class ToolStyle final : public QProxyStyle {
 public:
  ToolStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    const bool textBox = qobject_cast<const QPlainTextEdit*>(widget) != nullptr;
    if (element == PE_Frame && textBox) {
      return DrawBorderLine(*painter, option->palette, option->rect);
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override {
    // At a scale of 1.5 the content would cover the upper and lower line of a frame of 1 pixel.
    if (metric == PM_DefaultFrameWidth && qobject_cast<const QPlainTextEdit*>(widget)) return 2;
    if (metric == PM_ExclusiveIndicatorWidth || metric == PM_ExclusiveIndicatorHeight) return 13;
    return QProxyStyle::pixelMetric(metric, option, widget);
  }
};

/// Every role of every group: what is left open is taken from the desktop's theme.
QPalette LightPalette() {
  const QColor ground(239, 239, 239);
  const QColor grey(190, 190, 190);
  const std::pair<QPalette::ColorRole, QColor> colours[] = {
      {QPalette::WindowText, Qt::black},
      {QPalette::Button, ground},
      {QPalette::Light, Qt::white},
      {QPalette::Midlight, QColor(202, 202, 202)},
      {QPalette::Dark, QColor(159, 159, 159)},
      {QPalette::Mid, QColor(184, 184, 184)},
      {QPalette::Text, Qt::black},
      {QPalette::BrightText, Qt::white},
      {QPalette::ButtonText, Qt::black},
      {QPalette::Base, Qt::white},
      {QPalette::Window, ground},
      {QPalette::Shadow, QColor(118, 118, 118)},
      {QPalette::Highlight, QColor(48, 140, 198)},
      {QPalette::HighlightedText, Qt::white},
      {QPalette::Link, Qt::blue},
      {QPalette::LinkVisited, Qt::magenta},
      {QPalette::AlternateBase, QColor(247, 247, 247)},
      {QPalette::ToolTipBase, QColor(255, 255, 220)},
      {QPalette::ToolTipText, Qt::black},
      {QPalette::PlaceholderText, QColor(0, 0, 0, 128)},
  };
  static_assert(std::size(colours) == QPalette::NColorRoles - 1, "all but NoRole");
  QPalette palette;
  for (const auto& [role, colour] : colours) palette.setColor(role, colour);
  for (const auto text : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, text, grey);
  }
  palette.setColor(QPalette::Disabled, QPalette::Base, ground);
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(145, 145, 145));
  return palette;
}

/// A window that is a plain widget is a window to a screen reader too, not a mere filling.
QAccessibleInterface* InterfaceFor(const QString& className, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  if (widget == nullptr) return nullptr;
  if (dynamic_cast<Announcer*>(widget) != nullptr) {
    return new QAccessibleWidget(widget, QAccessible::Notification);
  }
  const bool plainWindow = widget->isWindow() && className == QLatin1String("QWidget");
  return plainWindow ? new QAccessibleWidget(widget, QAccessible::Window) : nullptr;
}

/// One picture a size, so that none is scaled. They are decoded when one is asked for: that takes
/// longer than all controls of the launcher.
class ProgramIcon final : public QIconEngine {
 public:
  void paint(QPainter* painter, const QRect& at, QIcon::Mode mode, QIcon::State state) override {
    Pictures().paint(painter, at, Qt::AlignCenter, mode, state);
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return Pictures().pixmap(size, 1, mode, state);  // in pixels of the screen, not of the windows
  }
  QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override {
    return Pictures().availableSizes(mode, state);
  }
  QIconEngine* clone() const override { return new ProgramIcon; }

 private:
  QIcon& Pictures() {
    if (!pictures_.isNull()) return pictures_;
    const QDir folder(QStringLiteral(":/icon"));
    for (const QString& name : folder.entryList()) pictures_.addFile(folder.filePath(name));
    return pictures_;
  }
  QIcon pictures_;
};

/// A key that is held presses no button, menu entry or message again. Qt does not always tell that
/// a press repeats: on X11 it is one at the very time at which the key was released.
class HeldKeyFilter final : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject*, QEvent* event) override {
    const auto type = event->type();
    const bool released = type == QEvent::KeyRelease;
    if (!released && type != QEvent::KeyPress && type != QEvent::ShortcutOverride) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    const std::pair now(key->key(), key->timestamp());
    const bool repeats = key->isAutoRepeat() || (now == released_ && now.second != 0);
    if (released) released_ = now;
    if (released || !repeats) return false;
    if (type == QEvent::KeyPress) return IsPressing(key->key());
    event->accept();  // it is no shortcut
    return true;
  }

 private:
  static bool IsPressing(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
  }

  std::pair<int, quint64> released_;  // the key, and when
};

}  // namespace

/// Half a pixel inside, so that all of the line is painted on a screen of fractional scale too.
void DrawBorderLine(QPainter& painter, const QPalette& palette, const QRectF& rect) {
  painter.setPen(palette.color(QPalette::Mid));
  painter.drawRect(rect.adjusted(0.5, 0.5, -0.5, -0.5));
}

void ApplyApplicationStyle() {
  QAccessible::installFactory(InterfaceFor);
  QApplication::setWindowIcon(QIcon(new ProgramIcon));
  QApplication::setStyle(new ToolStyle);
  QApplication::setPalette(LightPalette());
  QFont font;
  // The last ones hold the full-width characters of some captions.
  font.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Arial"),
                    QStringLiteral("DejaVu Sans"), QStringLiteral("Noto Sans"),
                    QStringLiteral("Segoe UI"), QStringLiteral("Microsoft YaHei"),
                    QStringLiteral("SimSun"), QStringLiteral("WenQuanYi Micro Hei")});
  font.setStyleHint(QFont::SansSerif);
  font.setPixelSize(kFontPixels);
  QApplication::setFont(font);
  qApp->installEventFilter(new HeldKeyFilter(qApp));
}
