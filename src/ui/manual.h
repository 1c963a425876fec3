// The operator's manual.
#pragma once

#include <QWidget>

#include "platform/directories.h"

/// Opens the manual that came with the program in the browser. Where there is none, or nothing that
/// opens it, the operator is told.
void ShowManual(QWidget* window, const Directories& directories);
