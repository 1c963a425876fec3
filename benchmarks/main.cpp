// Measures, and shows in one table what was measured against the bound that each figure has.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "medians.h"

namespace {

enum class Limit { None, AtMost, AtLeast };

struct Row {
  std::string what;
  double measured;
  const char* unit;
  Limit limit = Limit::None;
  double bound = 0;
};

constexpr double kAccess_us = 1;

void Print(const Row& row) {
  std::printf("%-62s %10.2f %-4s", row.what.c_str(), row.measured, row.unit);
  if (row.limit != Limit::None) {
    const bool atMost = row.limit == Limit::AtMost;
    const bool held = atMost ? row.measured <= row.bound : row.measured >= row.bound;
    std::printf(" %-8s %6.2f  %s", atMost ? "at most" : "at least", row.bound,
                held ? "held" : "MISSED");
  }
  std::printf("\n");
}

void PrintLogic(const Medians& m) {
  Print({"Programming 64 KiB / its bare port accesses and delays",
         m.Ratio("Program64KiB", "BareAccessesAndDelays"), "", Limit::AtMost, 1.10});
  Print({"HEX load of 64 KiB with checks: times as fast as libsrecord",
         m.Ratio("HexLoadByLibsrecord", "HexLoad"), "", Limit::AtLeast, 10});
  Print({"CRC-16 of 64 KiB: times as fast as boost::crc_optimal", m.Ratio("Crc16ByBoost", "Crc16"),
         "", Limit::AtLeast, 2});
  const Median& simulated = m.Of("SimulatedProgram64KiB");
  Print({"Simulated port accesses", simulated.counters.at("accesses") / simulated.seconds / 1e6,
         "M/s", Limit::AtLeast, 20});
}

void PrintStart(const Medians& m, const std::string& platform) {
  const std::string launcher = "Start/tool_launcher/" + platform;
  const std::string bare = "Start/bare_window/" + platform;
  const std::string on = " (" + platform + ")";
  Print({"Start to a bare window" + on, m.Of(bare).seconds * 1000, "ms"});
  Print({"Start to a window with one word" + on,
         m.Of("Start/text_window/" + platform).seconds * 1000, "ms"});
  Print({"Start to the launcher, less the calibration" + on, m.Of(launcher).seconds * 1000, "ms"});
  Print({"Start: launcher / bare window" + on, m.Ratio(launcher, bare), "", Limit::AtMost, 1.5});
  const double peak = m.Of(launcher).counters.at("peak_MiB");
  const double barePeak = m.Of(bare).counters.at("peak_MiB");
  Print({"Peak memory of a bare window" + on, barePeak, "MiB"});
  Print({"Peak memory of the launcher above that" + on, peak - barePeak, "MiB", Limit::AtMost, 10});
}

void PrintTiming(const Medians& m) {
  const auto& calibration = m.Of("BitDelay/2").counters;
  Print({"Calibration holds the start for", calibration.at("calibration_s"), "s"});
  Print({"Calibration: TickPollCount, thousands", calibration.at("TickPollCount") / 1000, ""});
  for (const char* factor : {"1", "2", "5", "10"}) {
    const double delay_us = m.Of(std::string("BitDelay/") + factor).seconds * 1e6;
    const std::string at = std::string("Speed factor ") + factor;
    const Limit limit = std::string(factor) == "2" ? Limit::AtMost : Limit::None;
    Print({at + ": bit delay", delay_us, "us"});
    Print({at + ": SCL, written bits (4 delays, 4 accesses of 1 us)",
           1000 / (4 * (delay_us + kAccess_us)), "kHz", limit, 100});
    Print({at + ": SCL, read bits (3 delays, 3 accesses of 1 us)",
           1000 / (3 * (delay_us + kAccess_us)), "kHz", limit, 100});
  }
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  Medians medians;
  benchmark::RunSpecifiedBenchmarks(&medians);
  benchmark::Shutdown();
  if (medians.failed) return 1;

  std::printf("\n%-62s %10s %-4s  %s\n", "What", "Measured", "", "Bound");
  PrintLogic(medians);
  PrintStart(medians, "offscreen");
  if (std::getenv("DISPLAY") != nullptr) PrintStart(medians, "xcb");
  PrintTiming(medians);
  return 0;
}
