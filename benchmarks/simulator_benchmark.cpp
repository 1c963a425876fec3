#include <benchmark/benchmark.h>

#include "support/images.h"
#include "support/vsk_rig.h"

namespace {

/// Programs a simulated chip through the whole bus layer, without delays.
void SimulatedProgram64KiB(benchmark::State& state) {
  const auto image = Image(65536);
  const auto rig = std::make_unique<VskRig>();
  rig->board.wire.ListenTo(nullptr);
  rig->Load(image);
  std::uint64_t accesses = 0;
  for (auto _ : state) {
    state.PauseTiming();
    rig->EnterIspMode();
    rig->isp.ChipErase();
    rig->view.Take();
    const std::uint64_t before = rig->board.cable.Accesses();
    state.ResumeTiming();
    rig->isp.ProgramImage(rig->view);
    accesses = rig->board.cable.Accesses() - before;
  }
  if (!FlashEquals(rig->board.vsk830.Bank(0), image)) state.SkipWithError("not programmed");
  state.counters["accesses"] = static_cast<double>(accesses);
}
BENCHMARK(SimulatedProgram64KiB)->Unit(benchmark::kMillisecond);

}  // namespace
