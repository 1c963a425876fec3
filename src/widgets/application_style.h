// The look that all windows share, whatever the desktop's theme.
#pragma once

#include <QPainter>
#include <QPalette>

/// Fonts by logical pixel, the icon, and a light palette: status texts are pure black or pure red,
/// which a dark ground would swallow. The desktop's theme changes nothing of it. A held key
/// presses what it presses once.
void ApplyApplicationStyle();

/// The line around a frame or a text box.
void DrawBorderLine(QPainter& painter, const QPalette& palette, const QRectF& rect);
