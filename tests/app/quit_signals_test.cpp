#include "app/quit_signals.h"

#include <QCoreApplication>
#include <QTest>
#include <QTimer>
#include <csignal>

// A signal that is not caught ends this program, and an event loop that is not ended its time-out.
class QuitSignalsTest final : public QObject {
  Q_OBJECT

 private slots:
  void EachSignalEndsTheEventLoop() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
      std::signal(signal, SIG_DFL);  // whatever this program was started with
      {
        const QuitSignals quitSignals;
        QTimer::singleShot(0, this, [signal] { std::raise(signal); });
        QCOMPARE(QCoreApplication::exec(), 0);
      }
      QVERIFY(std::signal(signal, SIG_IGN) == SIG_DFL);  // the default action comes back
      { const QuitSignals quitSignals; }
      QVERIFY(std::signal(signal, SIG_DFL) == SIG_IGN);  // what was ignored stays ignored
    }
  }

  void ASignalBeforeTheLoopEndsItAtItsBeginning() {
    const QuitSignals quitSignals;
    std::raise(SIGTERM);
    QCoreApplication::processEvents();  // as the windows do while they start up
    QCOMPARE(QCoreApplication::exec(), 0);
  }

  void LoopsWithinTheLoopEndToo() {
    const QuitSignals quitSignals;
    bool innerEnded = false;
    QTimer::singleShot(0, this, [&] {
      QTimer::singleShot(0, this, [] { std::raise(SIGTERM); });
      QEventLoop().exec();  // as a message box does
      innerEnded = true;
    });
    QCOMPARE(QCoreApplication::exec(), 0);
    QVERIFY(innerEnded);
  }
};

QTEST_GUILESS_MAIN(QuitSignalsTest)
#include "quit_signals_test.moc"
