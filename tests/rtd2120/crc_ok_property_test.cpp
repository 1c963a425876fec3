// The promise of the RTD2120 writer: "CRC OK." is shown only when the bank's flash equals the image
// over 0..maximum. The chip reports 8 bits: damage that happens to leave the CRC-8 as it was cannot
// be seen by anybody who only reads the CRC, so such runs are told apart, counted and few; and so
// are runs in which the chip refused the frame that sets the CRC's range, and its CRC over the
// range of an earlier run agrees. A line that is stuck low reads as a CRC of 00; images with that
// CRC are left out then.
#include <gtest/gtest.h>

#include <algorithm>

#include "image/cells.h"
#include "rtd2120/crc8.h"
#include "support/crc_range.h"
#include "support/random_faults.h"
#include "support/rtd_bench.h"

namespace {

constexpr int kRuns = 2000;

int Crc8(std::span<const std::uint8_t> bytes) {
  std::uint8_t crc = 0;
  for (const std::uint8_t byte : bytes) crc = tongxun2120::Crc8Byte(crc, byte);
  return crc;
}

struct ChipRun {
  std::unique_ptr<RtdBench> bench = std::make_unique<RtdBench>();
  CrcRange range;

  ChipRun() { bench->board.wire.ListenTo(&range); }
  ChipRun(const ChipRun&) = delete;
  ChipRun& operator=(const ChipRun&) = delete;

  void Load(Random& random) {
    auto& b = bench->images;
    for (std::uint8_t& byte : b.RtdBank1Buffer) byte = static_cast<std::uint8_t>(random());
    b.Bank1Max = static_cast<std::int32_t>(Pick(random, 0, Pick(random, 0, 80) == 0 ? 9000 : 700));
    b.Bank1Loaded = true;
  }
  std::span<const std::uint8_t> Image() const {
    const auto& b = bench->images;
    return tongxun::UsedCells(b.RtdBank1Buffer, b.Bank1Max);
  }
  std::span<const std::uint8_t> Bank() const { return bench->board.rtd2120.Bank(0).Cells(); }
  std::span<const std::uint8_t> Flash() const { return Bank().first(Image().size()); }
  /// The CRC that the chip computed over another range than the image's is the image's.
  bool OtherRangeAgrees() const {
    return !range.Covers(0, Image().size() - 1) && range.CrcOf(Bank()) == Crc8(Image());
  }
};

TEST(CrcOk, IsShownOnlyWhenTheFlashEqualsTheImage) {
  Random random(2120);
  int claimed = 0;
  int collisions = 0;
  for (int i = 0; i < kRuns; ++i) {
    ChipRun run;
    if (i % 2 == 0) {  // the chip holds an older image
      run.Load(random);
      run.bench->writer.Run(run.bench->view);
    }
    run.Load(random);
    const bool sound =
        AddFaults(random, 30 + run.Image().size() / 40, run.Image().size(), 10, run.bench->board);
    run.bench->writer.Run(run.bench->view);

    const bool ok = run.bench->view.text.ends_with("CRC OK.\r\n");
    ASSERT_TRUE(ok || !sound) << "run " << i << ": a sound chip was not written";
    claimed += ok ? 1 : 0;
    if (!ok || std::ranges::equal(run.Image(), run.Flash())) continue;
    if (run.bench->board.faults.sdaStuckLow && Crc8(run.Image()) == 0) continue;
    ASSERT_TRUE(Crc8(run.Image()) == Crc8(run.Flash()) || run.OtherRangeAgrees()) << "run " << i;
    ++collisions;
  }
  EXPECT_GT(claimed, kRuns / 3);
  EXPECT_LT(claimed, kRuns) << "the faults did nothing";
  EXPECT_LE(collisions, kRuns / 100);
}

}  // namespace
