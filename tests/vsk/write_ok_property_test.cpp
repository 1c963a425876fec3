// The promise of the tool: "Write Ok" is shown only when the chip's flash equals the image.
// An image whose CRC-16 is 0000 is left out: a silent chip reads as 0000 too.
#include <gtest/gtest.h>

#include <random>

#include "support/bench.h"

namespace {

constexpr int kRuns = 3000;

using Random = std::mt19937;

std::size_t Pick(Random& random, std::size_t least, std::size_t most) {
  return std::uniform_int_distribution<std::size_t>(least, most)(random);
}

std::vector<std::uint8_t> RandomImage(Random& random) {
  // Mostly a few pages, now and then many; often full of FF, as erased flash is.
  std::vector<std::uint8_t> image(Pick(random, 0, Pick(random, 0, 60) == 0 ? 9000 : 900));
  const bool sparse = Pick(random, 0, 3) == 0;
  for (std::uint8_t& byte : image) {
    byte = sparse && Pick(random, 0, 15) != 0 ? 0xFF : static_cast<std::uint8_t>(random());
  }
  return image;
}

/// Switches zero, one or two faults on; true when there is none.
bool AddFaults(Random& random, std::size_t imageSize, simulator::SimulatedBoard& board) {
  const std::uint64_t seen = board.wire.FramesSeen();
  const std::size_t frames = 8 + imageSize / 128;
  const std::size_t count = Pick(random, 0, 2);
  for (std::size_t i = 0; i < count; ++i) {
    switch (Pick(random, 0, 4)) {
      case 0:
        board.faults.refusedByte = {seen + Pick(random, 1, frames), Pick(random, 0, 257)};
        break;
      case 1:
        board.faults.unpluggedAfterFrame = seen + Pick(random, 0, frames);
        break;
      case 2:
        board.faults.flippedBit = {static_cast<int>(Pick(random, 0, 1)),
                                   static_cast<std::uint32_t>(Pick(random, 0, imageSize)),
                                   static_cast<int>(Pick(random, 0, 7))};
        break;
      case 3:
        board.faults.busyForEver = true;
        break;
      default:
        board.faults.sdaStuckLow = true;
    }
  }
  return count == 0;
}

bool BankEquals(std::span<const std::uint8_t> cells, std::int32_t maximum,
                const simulator::Flash& flash) {
  const auto image = tongxun::UsedCells(cells, maximum);
  return std::equal(image.begin(), image.end(), flash.Cells().begin());
}

bool FlashEqualsImage(Bench& bench) {
  const tongxun::CodeBuffers& b = bench.tool.vskImages;
  if (bench.tool.isp.ChipSelect == VskChip::Vsk830) {
    return BankEquals(b.CodeBuffer, b.CodeMax, bench.board.vsk830.Bank(0));
  }
  return BankEquals(b.CodeBank0, b.CodeBank0Max, bench.board.vsk630.Bank(0)) &&
         BankEquals(b.CodeBank1, b.CodeBank1Max, bench.board.vsk630.Bank(1));
}

/// Loads an image for the chip that is plugged in; returns its size.
std::size_t LoadRandomImage(Random& random, Bench& bench) {
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
    const auto bench = std::make_unique<Bench>(Wiring(), simulator::VskIdentity{}, chip);
    // Every other chip holds an older image, so that a refused erase matters.
    if (run % 2 == 0) {
      LoadRandomImage(random, *bench);
      bench->EnterIspMode();
      bench->tool.isp.DoProgram(bench->view);
    }
    const std::size_t size = LoadRandomImage(random, *bench);
    bench->EnterIspMode();
    const bool sound = AddFaults(random, size, bench->board);
    bench->tool.isp.DoProgram(bench->view);

    const bool ok = bench->view.operationText == "Write Ok";
    claimed += ok ? 1 : 0;
    ASSERT_TRUE(ok || !sound) << "run " << run << ": a sound chip was not programmed";
    if (ok && bench->tool.vskImages.CodeCrc != 0) {
      ASSERT_TRUE(FlashEqualsImage(*bench)) << "run " << run;
    }
  }
  EXPECT_GT(claimed, kRuns / 3);
  EXPECT_LT(claimed, kRuns) << "the faults did nothing";
}

}  // namespace
