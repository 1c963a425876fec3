#include <benchmark/benchmark.h>
#include <srecord/input/file/intel.h>
#include <srecord/memory.h>

#include <fstream>
#include <memory>
#include <numeric>

#include "support/images.h"
#include "support/temp_folder.h"
#include "support/transcript.h"
#include "vsk/vsk_load.h"

namespace {

constexpr std::size_t kBytes = 65536;
constexpr std::size_t kRecordBytes = 16;

std::string Record(std::size_t address, std::span<const std::uint8_t> data) {
  std::vector<std::uint8_t> bytes{static_cast<std::uint8_t>(data.size()),
                                  static_cast<std::uint8_t>(address >> 8),
                                  static_cast<std::uint8_t>(address), 0};
  bytes.insert(bytes.end(), data.begin(), data.end());
  bytes.push_back(static_cast<std::uint8_t>(-std::accumulate(bytes.begin(), bytes.end(), 0)));
  std::string text = ":";
  for (const std::uint8_t byte : bytes) text += fileop::HexByte(byte);
  return text + "\r\n";
}

/// A HEX file of 64 KiB, as both readers find it on the disk.
struct HexFile {
  TempFolder folder;
  std::vector<std::uint8_t> image = Image(kBytes);
  std::string name = (folder / "image.hex").string();

  HexFile() {
    std::ofstream file(name, std::ios::binary);
    for (std::size_t at = 0; at < kBytes; at += kRecordBytes) {
      file << Record(at, std::span(image).subspan(at, kRecordBytes));
    }
    file << ":00000001FF\r\n";
  }
};

void HexLoad(benchmark::State& state) {
  const HexFile file;
  const auto buffers = std::make_unique<tongxun::VskImages>();
  Transcript view;
  for (auto _ : state) {
    if (!loadfile::ReadHexFile(file.name, 65536, *buffers, view).Ok()) break;
    buffers->CheckCode();
  }
  const bool loaded = std::equal(file.image.begin(), file.image.end(), buffers->CodeBuffer.begin());
  if (!loaded || buffers->CodeMax != kBytes - 1) state.SkipWithError("not loaded");
}
BENCHMARK(HexLoad)->Unit(benchmark::kMicrosecond);

void HexLoadByLibsrecord(benchmark::State& state) {
  const HexFile file;
  for (auto _ : state) {
    srecord::memory memory;
    memory.reader(srecord::input_file_intel::create(file.name), srecord::defcon_ignore,
                  srecord::defcon_fatal_error);
    state.PauseTiming();
    if (memory.get(kBytes - 1) != file.image.back()) state.SkipWithError("not loaded");
    state.ResumeTiming();
  }
}
BENCHMARK(HexLoadByLibsrecord)->Unit(benchmark::kMicrosecond);

}  // namespace
