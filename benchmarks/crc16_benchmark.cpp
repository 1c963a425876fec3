#include <benchmark/benchmark.h>

#include <boost/crc.hpp>

#include "image/crc16.h"
#include "support/images.h"

namespace {

constexpr std::size_t kBytes = 65536;

std::uint16_t BoostCrc(const std::vector<std::uint8_t>& image) {
  boost::crc_optimal<16, 0x8005, 0xFFFF, 0, false, false> crc;
  crc.process_bytes(image.data(), image.size());
  return crc.checksum();
}

void Crc16(benchmark::State& state) {
  const auto image = Image(kBytes);
  if (tongxun::CrcBytes(tongxun::kCrcStart, image) != BoostCrc(image)) {
    state.SkipWithError("the two CRCs differ");
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(tongxun::CrcBytes(tongxun::kCrcStart, image));
  }
}
BENCHMARK(Crc16)->Unit(benchmark::kMicrosecond);

void Crc16ByBoost(benchmark::State& state) {
  const auto image = Image(kBytes);
  for (auto _ : state) benchmark::DoNotOptimize(BoostCrc(image));
}
BENCHMARK(Crc16ByBoost)->Unit(benchmark::kMicrosecond);

}  // namespace
