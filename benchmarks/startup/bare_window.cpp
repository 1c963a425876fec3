// An empty window: the least that a program with windows costs.
#include "startup/shown.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QWidget window;
  return TellWhenShown(window);
}
