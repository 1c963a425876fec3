// A window with one word in it: what a program's first text costs besides.
#include <QPushButton>

#include "startup/shown.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QPushButton window(QStringLiteral("EXIT"));
  return TellWhenShown(window);
}
