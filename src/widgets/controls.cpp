#include "widgets/controls.h"

#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPlainTextEdit>
#include <algorithm>

#include "widgets/application_style.h"
#include "widgets/guarded.h"

namespace {

template <typename Control>
Control* Named(Control* control, const char* name, const QString& accessibleName, const Twips& at) {
  control->setObjectName(QLatin1String(name));
  control->setAccessibleName(QString(accessibleName).remove(QLatin1Char('&')));
  Place(control, at);
  return control;
}

/// A frame whose caption stands in its border line, above the first option.
class Frame final : public QGroupBox {
 public:
  using QGroupBox::QGroupBox;

 protected:
  void paintEvent(QPaintEvent*) override {
    constexpr int kIndent = 10;
    constexpr int kGap = 3;  // between the line and the caption
    const bool hasCaption = !title().isEmpty();
    QPainter painter(this);
    DrawBorderLine(painter, palette(), QRectF(rect()).adjusted(0, hasCaption ? 7 : 0, 0, 0));
    if (!hasCaption) return;
    const QRect caption(kIndent, 0, fontMetrics().horizontalAdvance(title()),
                        fontMetrics().height());
    painter.fillRect(caption.adjusted(-kGap, 0, kGap, 0), palette().window());
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(caption, Qt::AlignCenter, title());
  }
};

/// A screen reader's press clicks a tenth of a second later: not when the button was let go of
/// meanwhile.
class Button final : public QPushButton {
 public:
  using QPushButton::QPushButton;

 protected:
  void timerEvent(QTimerEvent* event) override {
    const bool wasBlocked = blockSignals(!isDown());
    QPushButton::timerEvent(event);
    blockSignals(wasBlocked);
  }
};

/// What a control needs to show its caption.
QSize NeededSize(const QWidget* control) {
  const QFontMetrics text = control->fontMetrics();
  if (const auto* button = qobject_cast<const QPushButton*>(control)) {
    return {text.horizontalAdvance(button->text()) + 12, text.height() + 8};
  }
  const QSize hint = control->sizeHint();
  const bool option = qobject_cast<const QRadioButton*>(control) != nullptr;
  return option ? QSize(hint.width(), text.height()) : hint;
}

class MenuShortcutFilter : public QObject {
 public:
  explicit MenuShortcutFilter(QWidget* window) : QObject(window), window_(window) {}

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::ShortcutOverride) return false;
    const QKeySequence pressed(static_cast<QKeyEvent*>(event)->keyCombination());
    for (const QAction* action : window_->findChildren<QAction*>()) {
      if (!action->isEnabled() || action->shortcut() != pressed) continue;
      event->ignore();
      return true;
    }
    return false;
  }

 private:
  QWidget* window_;
};

/// The selected option of the frame is where the Tab key stops; the first one while none is.
void SetTabStop(QWidget* frame) {
  const QList<QRadioButton*> options = frame->findChildren<QRadioButton*>();
  const auto selected = std::find_if(options.begin(), options.end(),
                                     [](auto* option) { return option->isChecked(); });
  const QRadioButton* stop = selected != options.end() ? *selected : options.value(0);
  for (QRadioButton* option : options) {
    option->setFocusPolicy(option == stop ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

}  // namespace

void Place(QWidget* control, const Twips& at) {
  const QSize given(PixelsOf(at.width), PixelsOf(at.height));
  const bool hasCaption = !control->property("text").toString().isEmpty();
  const QSize needed = !hasCaption && !given.isEmpty() ? given : NeededSize(control);
  control->setGeometry(
      QRect(QPoint(PixelsOf(at.left), PixelsOf(at.top)), given.expandedTo(needed)));
}

void FixClientArea(QWidget* client, int widthTwips, int heightTwips) {
  client->setFixedSize(PixelsOf(widthTwips), PixelsOf(heightTwips));
}

OptionButton::OptionButton(const QString& caption, QWidget* frame) : QRadioButton(caption, frame) {
  SetTabStop(frame);
  connect(this, &QRadioButton::toggled, this, [frame] { SetTabStop(frame); });
}

void OptionButton::OnSelected(const std::function<void()>& action) {
  const auto guarded = Guarded(window(), action);
  connect(this, &QRadioButton::toggled, this, [guarded](bool selected) {
    if (selected) guarded();
  });
  connect(this, &QRadioButton::pressed, this, [this] { selectedBeforeClick_ = isChecked(); });
  connect(this, &QRadioButton::clicked, this, [this, guarded] {
    if (selectedBeforeClick_) guarded();
  });
}

QLabel* AddLabel(QWidget* parent, const char* name, const QString& caption, const Twips& at) {
  return Named(new QLabel(caption, parent), name, caption, at);
}

SpokenLabel* AddSpokenLabel(QWidget* parent, const char* name, const QString& description,
                            const Twips& at) {
  SpokenLabel* label = Named(new SpokenLabel(parent), name, QString(), at);
  label->setAccessibleDescription(description);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  return label;
}

QPushButton* AddButton(QWidget* parent, const char* name, const QString& caption, const Twips& at) {
  auto* button = Named<QPushButton>(new Button(caption, parent), name, caption, at);
  button->setAutoDefault(true);  // Enter presses the button that has the focus
  return button;
}

QGroupBox* AddFrame(QWidget* parent, const char* name, const QString& caption, const Twips& at) {
  return Named(new Frame(caption, parent), name, caption, at);
}

OptionButton* AddOption(QGroupBox* frame, const char* name, const QString& caption,
                        const Twips& at) {
  return Named(new OptionButton(caption, frame), name, caption, at);
}

QLineEdit* AddTextBox(QWidget* parent, const char* name, const QString& accessibleName,
                      const Twips& at) {
  return Named(new QLineEdit(parent), name, accessibleName, at);
}

QLineEdit* AddReadOnlyBox(QWidget* parent, const char* name, const QString& accessibleName,
                          const Twips& at) {
  QLineEdit* box = AddTextBox(parent, name, accessibleName, at);
  box->setReadOnly(true);
  return box;
}

QPlainTextEdit* AddTextDisplay(QWidget* parent, const char* name, const QString& accessibleName,
                               const Twips& at) {
  auto* display = Named(new QPlainTextEdit(parent), name, accessibleName, at);
  display->setReadOnly(true);
  display->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  return display;
}

QAction* AddMenuItem(QMenu* menu, const char* name, const QString& caption, const char* shortcut) {
  QAction* item = menu->addAction(caption);
  item->setObjectName(QLatin1String(name));
  item->setShortcut(QKeySequence(QLatin1String(shortcut)));
  item->setEnabled(false);
  return item;
}

void OnChosen(QAction* item, const std::function<void()>& action) {
  QObject::connect(item, &QAction::triggered, item, [action] { action(); });
  item->setEnabled(true);
}

void PreferMenuShortcuts(QWidget* window) {
  auto* filter = new MenuShortcutFilter(window);
  for (QLineEdit* box : window->findChildren<QLineEdit*>()) box->installEventFilter(filter);
  for (QPlainTextEdit* box : window->findChildren<QPlainTextEdit*>())
    box->installEventFilter(filter);
}
