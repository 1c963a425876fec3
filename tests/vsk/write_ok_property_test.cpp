// The promise of the tool: "Write Ok" is shown only when the chip's flash equals the image.
// An image whose CRC-16 is 0000 is left out: a silent chip reads as 0000 too.
#include <gtest/gtest.h>

#include <algorithm>

#include "image/cells.h"
#include "support/random_faults.h"
#include "support/vsk_bench.h"

namespace {

constexpr int kRuns = 3000;

std::vector<std::uint8_t> RandomImage(Random& random) {
  // Mostly a few pages, now and then many; often full of FF, as erased flash is.
  std::vector<std::uint8_t> image(Pick(random, 0, Pick(random, 0, 60) == 0 ? 9000 : 900));
  const bool sparse = Pick(random, 0, 3) == 0;
  for (std::uint8_t& byte : image) {
    byte = sparse && Pick(random, 0, 15) != 0 ? 0xFF : static_cast<std::uint8_t>(random());
  }
  return image;
}

bool BankEquals(std::span<const std::uint8_t> cells, std::int32_t maximum,
                const simulator::Flash& flash) {
  const auto image = tongxun::UsedCells(cells, maximum);
  return std::equal(image.begin(), image.end(), flash.Cells().begin());
}

bool FlashEqualsImage(VskBench& bench) {
  const tongxun::VskImages& b = bench.images;
  if (bench.isp.ChipSelect == VskChip::Vsk830) {
    return BankEquals(b.CodeBuffer, b.CodeMax, bench.board.vsk830.Bank(0));
  }
  return BankEquals(b.CodeBank0, b.CodeBank0Max, bench.board.vsk630.Bank(0)) &&
         BankEquals(b.CodeBank1, b.CodeBank1Max, bench.board.vsk630.Bank(1));
}

/// Loads an image for the chip that is plugged in; returns its size.
std::size_t LoadRandomImage(Random& random, VskBench& bench) {
  const auto image = RandomImage(random);
  if (bench.board.Connected() == simulator::ConnectedChip::Vsk830) {
    bench.Load(image);
    return image.size();
  }
  const auto bank1 = RandomImage(random);
  bench.Load(image, bank1);
  return image.size() + bank1.size();
}

TEST(WriteOk, IsShownOnlyWhenTheFlashEqualsTheImage) {
  Random random(20261122);
  int claimed = 0;
  for (int run = 0; run < kRuns; ++run) {
    const auto chip =
        run % 3 == 0 ? simulator::ConnectedChip::Vsk630 : simulator::ConnectedChip::Vsk830;
    const auto bench = std::make_unique<VskBench>(chip);
    // Every other chip holds an older image, so that a refused erase matters.
    if (run % 2 == 0) {
      LoadRandomImage(random, *bench);
      bench->EnterIspMode();
      bench->isp.DoProgram(bench->view);
    }
    const std::size_t size = LoadRandomImage(random, *bench);
    bench->EnterIspMode();
    const bool sound = AddFaults(random, 8 + size / 128, size, 2, bench->board);
    bench->isp.DoProgram(bench->view);

    const bool ok = bench->view.operationText == "Write Ok";
    claimed += ok ? 1 : 0;
    ASSERT_TRUE(ok || !sound) << "run " << run << ": a sound chip was not programmed";
    if (ok && bench->images.CodeCrc != 0) {
      ASSERT_TRUE(FlashEqualsImage(*bench)) << "run " << run;
    }
  }
  EXPECT_GT(claimed, kRuns / 3);
  EXPECT_LT(claimed, kRuns) << "the faults did nothing";
}

}  // namespace
