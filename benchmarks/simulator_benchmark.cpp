#include <benchmark/benchmark.h>

#include "support/images.h"
#include "support/vsk_bench.h"

namespace {

/// Programs a simulated chip through the whole bus layer, without delays.
void SimulatedProgram64KiB(benchmark::State& state) {
  const auto image = Image(65536);
  const auto bench = std::make_unique<VskBench>();
  bench->board.wire.ListenTo(nullptr);
  bench->Load(image);
  std::uint64_t accesses = 0;
  for (auto _ : state) {
    state.PauseTiming();
    bench->EnterIspMode();
    bench->isp.ChipErase();
    bench->view.Take();
    const std::uint64_t before = bench->board.cable.Accesses();
    state.ResumeTiming();
    bench->isp.ProgramImage(bench->view);
    accesses = bench->board.cable.Accesses() - before;
  }
  if (!FlashEquals(bench->board.vsk830.Bank(0), image)) state.SkipWithError("not programmed");
  state.counters["accesses"] = static_cast<double>(accesses);
}
BENCHMARK(SimulatedProgram64KiB)->Unit(benchmark::kMillisecond);

}  // namespace
