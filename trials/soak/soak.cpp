// Plays operators' sessions through the windows on simulated boards, and counts what must not be.
//   soak [runs [seed]]
#include <malloc.h>

#include <QApplication>
#include <QSettings>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

#include "soak/session.h"
#include "widgets/application_style.h"

namespace {

constexpr std::size_t kStepsOfASession = 60;
constexpr std::size_t kMostGrowth = 16U << 20;  // bytes; a window more would show within hours

volatile std::sig_atomic_t currentRun = 0;

void TellCrash(int signal) {
  std::printf("crashed with signal %d in run %d\n", signal, static_cast<int>(currentRun));
  std::fflush(stdout);
  std::_Exit(1);
}

/// The memory in use on the heap.
std::size_t HeapBytes() { return mallinfo2().uordblks; }

void Report(const Tally& tally, std::size_t growth, unsigned seed) {
  std::cout << "seed                                        " << seed
            << "\nruns                                        " << tally.runs
            << "\n  without an end                            " << tally.endless
            << "\n  shown otherwise than returned             " << tally.shownOtherwise
            << "\nclaims of success                           " << tally.claims
            << "\n  in red                                    " << tally.claimsInRed
            << "\n  on a flash that differs, with equal CRC   " << tally.equalCrc
            << "\n  on one that differs, image CRC 0          " << tally.crcZero
            << "\n  on one that differs, CRC of another range " << tally.otherRange
            << "\n  on a chip with pages of another size      " << tally.otherPages
            << "\n  on one that differs, unexplained          " << tally.unexplained
            << "\nruns on a sound chip with a fitting image   " << tally.soundRuns
            << "\n  shown as failed                           " << tally.soundFailures
            << "\ntexts shown                                 " << tally.texts.size()
            << "\n  unknown                                   " << tally.unknownTexts.size()
            << "\nheap growth, KiB                            " << growth / 1024 << "\n";
  for (const QString& text : tally.unknownTexts) {
    std::cout << "unknown text: " << text.toStdString() << "\n";
  }
}

}  // namespace

int main(int count, char** arguments) {
  // The file dialog keeps its history there, not in the user's own folder.
  const TempFolder config;
  qputenv("XDG_CONFIG_HOME", config.Path().c_str());
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_LOGGING_RULES", "*=false");  // the platform's remarks on windows that nobody sees
  QApplication application(count, arguments);
  ApplyApplicationStyle();
  QApplication::setQuitOnLastWindowClosed(false);
  for (const int signal : {SIGSEGV, SIGABRT, SIGFPE, SIGBUS}) std::signal(signal, TellCrash);

  const std::uint64_t runs = count > 1 ? std::stoull(arguments[1]) : 10'000;
  const auto seed = static_cast<unsigned>(count > 2 ? std::stoul(arguments[2]) : 2120);
  Random random(seed);
  Tally tally;
  DialogRobot robot(random, tally);
  std::size_t heapBefore = 0;  // after the first quarter, when all that is kept has been made
  while (tally.runs < runs) {
    QSettings(QStringLiteral("QtProject")).remove(QStringLiteral("FileDialog"));
    Session session(random, robot, tally);
    for (std::size_t step = 0; step < kStepsOfASession && tally.runs < runs; ++step) {
      session.Step();
      currentRun = static_cast<std::sig_atomic_t>(tally.runs);
    }
    if (heapBefore == 0 && tally.runs >= runs / 4) heapBefore = HeapBytes();
  }
  const std::size_t heapAfter = HeapBytes();
  const std::size_t growth = heapAfter > heapBefore ? heapAfter - heapBefore : 0;
  Report(tally, growth, seed);
  return tally.Failures() > 0 || growth > kMostGrowth || tally.claims == 0 || tally.soundRuns == 0
             ? 1
             : 0;
}
