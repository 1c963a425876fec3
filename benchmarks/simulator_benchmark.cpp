#include <benchmark/benchmark.h>

#include "support/bench.h"
#include "support/images.h"

namespace {

/// Programs a simulated chip through the whole bus layer, without delays.
void SimulatedProgram64KiB(benchmark::State& state) {
  const auto image = Image(65536);
  const auto bench = NewBench();
  bench->board.wire.ListenTo(nullptr);
  bench->Load(image);
  std::uint64_t accesses = 0;
  for (auto _ : state) {
    state.PauseTiming();
    bench->EnterIspMode();
    bench->tool.isp.ChipErase();
    bench->view.Take();
    const std::uint64_t before = bench->board.cable.Accesses();
    state.ResumeTiming();
    bench->tool.isp.ProgramImage(bench->tool.vskImages.CodeMax, bench->view);
    accesses = bench->board.cable.Accesses() - before;
  }
  if (!FlashEquals(bench->board.vsk830.Bank(0), image)) state.SkipWithError("not programmed");
  state.counters["accesses"] = static_cast<double>(accesses);
}
BENCHMARK(SimulatedProgram64KiB)->Unit(benchmark::kMillisecond);

}  // namespace
