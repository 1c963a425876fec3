// Keeps windows inside the screen they open on.
#pragma once

#include <QMainWindow>
#include <QRect>
#include <QScrollArea>

/// The part of the window's screen that its client area may take: what panels and the frame of the
/// window manager leave.
QRect ScreenSpace(const QWidget& window);

/// Moves `window`, which is not shown yet, to the right of `launcher` and into the screen. On a
/// narrow screen the launcher makes room.
void PlaceBeside(QWidget& window, QWidget& launcher);
/// The largest size that a window beside `launcher` can have.
QSize SpaceBeside(const QWidget& launcher);

/// Puts `content` behind scroll bars, which are seen where they are needed. The focus goes to what
/// is inside, never to the bars, and what has it first is in view.
QScrollArea* Scrolled(QWidget* content);

/// Where the controls of a window of this size go: into the window itself, which cannot be resized
/// then, where the screen has the space, else behind scroll bars.
QWidget* ClientOf(QWidget& window, const QSize& size);

/// Makes `client`, of fixed size, the central widget: as a whole where the screen has the space,
/// else behind scroll bars. The menu bar must be complete.
void ShowWholeOrScrolled(QMainWindow& window, QWidget* client);
