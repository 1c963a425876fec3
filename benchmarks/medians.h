// Keeps the median of every benchmark's repetitions, for the table in the end.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

struct Median {
  double seconds = 0;  // for one iteration: the thread's own time, else real or manual time
  std::map<std::string, double> counters;
};

class Medians final : public benchmark::ConsoleReporter {
 public:
  Medians() : ConsoleReporter(OO_Tabular) {}
  void ReportRuns(const std::vector<Run>& runs) override;

  /// `name`: the benchmark's name and arguments, for instance "BitDelay/2". Throws
  /// std::out_of_range when it was not measured.
  const Median& Of(const std::string& name) const { return medians_.at(name); }
  /// How many times as long as `second` the benchmark `first` took.
  double Ratio(const std::string& first, const std::string& second) const {
    return Of(first).seconds / Of(second).seconds;
  }
  bool failed = false;  // a benchmark reported an error

 private:
  std::map<std::string, Median> medians_;
};
