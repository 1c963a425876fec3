// The picture on the RTD2120 writer's "Run" button.
#pragma once

#include <QIcon>

/// A chip with an arrow that points into it.
QIcon RunPicture();
