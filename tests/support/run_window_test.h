// The tests of the windows are one program, which calls the one that it is asked for: Qt's headers
// take longer to compile than all of them.
#pragma once

#include <QApplication>
#include <QTest>

/// A process's only test, on an application of its own as `QTEST_MAIN` builds it. Returns the
/// number of failures.
template <typename Test>
int RunWindowTest(int count, char** arguments) {
  QApplication application(count, arguments);
  application.setAttribute(Qt::AA_Use96Dpi, true);
  Test test;
  return QTest::qExec(&test, count, arguments);
}
