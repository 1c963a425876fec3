// What a soak counts.
#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <set>

struct Tally {
  std::uint64_t runs = 0;         // operations that were started
  std::uint64_t claims = 0;       // banks and images that were shown as written
  std::uint64_t claimsInRed = 0;  // among them, those in the colour of a failure

  // Claims on a flash that differs from the image, by what explains them.
  std::uint64_t equalCrc = 0;    // the flash has the image's CRC
  std::uint64_t crcZero = 0;     // the image's CRC is 0, as is that of a silent chip
  std::uint64_t otherRange = 0;  // the CRC ran over the range that an earlier run had set
  std::uint64_t otherPages = 0;  // another chip is plugged in, with pages of another size
  std::uint64_t unexplained = 0;

  std::uint64_t soundRuns = 0;       // on a sound chip with a fitting image
  std::uint64_t soundFailures = 0;   // among them, those that were shown as failed
  std::uint64_t endless = 0;         // runs that were stopped at the bound on port accesses
  std::uint64_t shownOtherwise = 0;  // runs of which the window shows something else
  QStringList unknownTexts;
  std::set<QString> texts;  // all that were shown

  std::uint64_t Failures() const {
    return unexplained + soundFailures + endless + shownOtherwise +
           static_cast<std::uint64_t>(unknownTexts.size());
  }
};
