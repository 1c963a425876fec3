#include "medians.h"

void Medians::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    failed = failed || run.error_occurred;
    if (run.aggregate_name != "median") continue;
    const benchmark::BenchmarkName& name = run.run_name;
    const bool own = name.time_type.empty();
    const double time = own ? run.GetAdjustedCPUTime() : run.GetAdjustedRealTime();
    Median& median =
        medians_[name.args.empty() ? name.function_name : name.function_name + "/" + name.args];
    median.seconds = time / benchmark::GetTimeUnitMultiplier(run.time_unit);
    for (const auto& [key, counter] : run.counters) median.counters[key] = counter.value;
  }
  ConsoleReporter::ReportRuns(runs);
}
