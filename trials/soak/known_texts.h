// All texts that the windows may show.
#pragma once

#include <QString>

/// Whether a text may stand in the control of this name; dialogs are called "dialog".
bool IsKnownText(const QString& control, const QString& text);
