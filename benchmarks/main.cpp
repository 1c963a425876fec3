// Measures, and shows in one table what was measured against the bound that each figure has.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "medians.h"

namespace {

struct Row {
  std::string what;
  double measured;
  const char* unit;
  double atLeast = 0;
  double atMost = 0;  // 0: no bound above
};

void Print(const Row& row) {
  std::printf("%-62s %10.2f %-4s", row.what.c_str(), row.measured, row.unit);
  const bool held = row.measured >= row.atLeast && (row.atMost == 0 || row.measured <= row.atMost);
  if (row.atLeast != 0) std::printf(" at least %6.2f", row.atLeast);
  if (row.atMost != 0) std::printf(" at most  %6.2f", row.atMost);
  if (row.atLeast != 0 || row.atMost != 0) std::printf("  %s", held ? "held" : "MISSED");
  std::printf("\n");
}

void PrintLogic(const Medians& m) {
  int work = 0;
  for (const std::string what : {"Programming", "isp-write: reading", "isp-write: comparing"}) {
    const std::string which = "/" + std::to_string(work++);
    Print({what + " 64 KiB / its bare port accesses and delays",
           m.Ratio("Move64KiB" + which, "BareAccessesAndDelays" + which), "", 0, 1.10});
  }
  Print({"HEX load of 64 KiB with checks: times as fast as libsrecord",
         m.Ratio("HexLoadByLibsrecord", "HexLoad"), "", 10});
  Print({"CRC-16 of 64 KiB: times as fast as boost::crc_optimal", m.Ratio("Crc16ByBoost", "Crc16"),
         "", 2});
  const Median& simulated = m.Of("SimulatedProgram64KiB");
  Print({"Simulated port accesses", simulated.counters.at("accesses") / simulated.seconds / 1e6,
         "M/s", 20});
  const Median& recorded = m.Of("RecordedBits");
  const double accesses = recorded.counters.at("accesses");
  Print({"Recording adds to a port access", recorded.seconds * 1e6 / accesses, "us"});
  Print({"Recording of an access takes", recorded.counters.at("bytes") / accesses, "B"});
}

void PrintStart(const Medians& m, const std::string& platform) {
  const std::string launcher = "Start/tool_launcher/" + platform;
  const std::string bare = "Start/bare_window/" + platform;
  const std::string on = " (" + platform + ")";
  Print({"Start to a bare window" + on, m.Of(bare).seconds * 1000, "ms"});
  Print({"Start to a window with one word" + on,
         m.Of("Start/text_window/" + platform).seconds * 1000, "ms"});
  Print({"Start to the launcher, less the calibration" + on, m.Of(launcher).seconds * 1000, "ms"});
  Print({"Start: launcher / bare window" + on, m.Ratio(launcher, bare), "", 0, 1.5});
  const double peak = m.Of(launcher).counters.at("peak_MiB");
  const double barePeak = m.Of(bare).counters.at("peak_MiB");
  Print({"Peak memory of a bare window" + on, barePeak, "MiB"});
  Print({"Peak memory of the launcher above that" + on, peak - barePeak, "MiB", 0, 10});
}

void PrintTerminalStart(const Medians& m) {
  const std::string isp = "StartTerminal/terminal_access";
  const std::string none = "StartTerminal//bin/true";
  Print({"isp-write: start to the first port access, no calibration", m.Of(isp).seconds * 1000,
         "ms", 0, 10});
  Print({"isp-write: that start / the whole of /bin/true", m.Ratio(isp, none), ""});
}

constexpr double kAccess_us = 1;

void PrintTiming(const Medians& m) {
  const Median& calibration = m.Of("Scl/2/0/0");
  Print({"Calibration holds the start for", calibration.seconds, "s"});
  Print({"Calibration: TickPollCount, thousands", calibration.counters.at("TickPollCount") / 1000,
         ""});
  for (const std::string cost : {"2", "0", "300", "1200"}) {
    const std::string reading = cost == "0" ? "own clock reading" : "clock reading " + cost + " ns";
    const auto& idle = m.Of("Scl/2/" + cost + "/0").counters;
    const auto& busy = m.Of("Scl/2/" + cost + "/1").counters;
    const std::string scl = "SCL, factor 2, " + reading + ": ";
    Print({scl + "idle", idle.at("written_kHz"), "kHz", 60, 95});
    Print({scl + "busy", busy.at("written_kHz"), "kHz", 60, 95});
    Print({scl + "busy start only", busy.at("written_after_kHz"), "kHz", 60, 95});
    Print({scl + "read bits", idle.at("read_kHz"), "kHz", 0, 100});
  }
  for (const std::string access_us : {"1", "2", "5"}) {
    Print({"SCL, factor 2, written bits, port access of " + access_us + " us",
           m.Of("SclByAccess/" + access_us).counters.at("written_kHz"), "kHz"});
  }
  for (int factor = 1; factor <= 10; ++factor) {
    const std::string at = "Speed factor " + std::to_string(factor);
    const double scl_kHz =
        m.Of("Scl/" + std::to_string(factor) + "/0/0").counters.at("written_kHz");
    Print({at + ": SCL, written bits", scl_kHz, "kHz"});
    Print({at + ": bit delay / factor", (1000 / scl_kHz / 4 - kAccess_us) / factor, "us"});
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
  PrintTerminalStart(medians);
  PrintTiming(medians);
  return 0;
}
