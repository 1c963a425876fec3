// What a recording adds to every access of the port.
#include <benchmark/benchmark.h>

#include "bus/iic_port.h"
#include "bus/recording_port.h"
#include "support/board_rig.h"
#include "support/temp_folder.h"

namespace {

constexpr int kBits = 100'000;
constexpr int kAccessesPerBit = 3;

/// Clocks bits out into a file of the temporary folder.
void RecordedBits(benchmark::State& state) {
  const TempFolder folder;
  NoPort none;
  RecordingPort recording(none, folder / "bus.vcd", [](const std::string&) {});
  IspBoards boards;
  boards.BoardTable[0] = Wiring();
  recording.FollowBoards(boards);
  IicPort port(recording, boards, {});
  port.InitPortShadows();
  bool high = false;
  for (auto _ : state) {
    high = !high;
    high ? port.SetSdaHigh() : port.SetSdaLow();
    port.SetSclHigh();
    port.SetSclLow();
  }
  state.counters["accesses"] = kAccessesPerBit;
  state.counters["bytes"] =
      static_cast<double>(std::filesystem::file_size(folder / "bus.vcd")) / kBits;
}
BENCHMARK(RecordedBits)->Unit(benchmark::kNanosecond)->Iterations(kBits);

}  // namespace
