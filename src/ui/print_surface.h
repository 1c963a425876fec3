// A window's client area, on which lines of text can be printed behind the controls. Its accessible
// name is what is printed, and the last line of a load is spoken.
#pragma once

#include <QStringList>
#include <QWidget>

#include "widgets/live_text.h"

class PrintSurface final : public QWidget {
 public:
  explicit PrintSurface(QWidget* window) : QWidget(window), announcer_(new Announcer(this)) {}

  /// Prints below the line printed before, from the top left corner on; lines below the lower edge
  /// are not seen.
  void PrintLine(const QString& line);
  /// Takes all lines back; the next one is printed at the top.
  void Clear();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Announce();

  Announcer* const announcer_;
  QStringList lines_;  // at most as many as the surface can show
};
