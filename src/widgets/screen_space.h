// Keeps windows inside the screen they open on.
#pragma once

#include <QMainWindow>
#include <QRect>

/// The part of the window's screen that its client area may take: what panels and the frame of the
/// window manager leave.
QRect ScreenSpace(const QWidget& window);

/// Moves the window so that all of it can be seen.
void MoveInsideScreen(QWidget& window);

/// Makes `client`, of fixed size, the central widget: as a whole where the screen has the space,
/// else behind scroll bars. The menu bar must be complete.
void ShowWholeOrScrolled(QMainWindow& window, QWidget* client);
