// The tool on the PC's parallel port.
#include <QApplication>
#include <memory>

#include "app/tool.h"
#include "ui/controls.h"
#include "ui/launcher.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  ApplyApplicationStyle();

  NoPort io;
  const auto ticks = SystemTickCounter();
  const auto tool = std::make_unique<Tool>(io, *ticks, SystemDirectories("isp-writer"));
  Main launcher(tool->directories, tool->port, tool->portConfig, tool->timing, tool->buffers,
                tool->frames, tool->isp, tool->vskWriter);
  launcher.show();
  return QApplication::exec();
}
