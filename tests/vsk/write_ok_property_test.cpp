// The promise of the tool: "Write Ok" is shown only when the chip's flash equals the image.
// An image whose CRC-16 is 0000 is left out: a silent chip reads as 0000 too.
#include "support/images.h"
#include "support/random_faults.h"
#include "support/vsk_bench.h"

TEST(WriteOk, IsShownOnlyWhenTheFlashEqualsTheImage) {
  Random random(20261122);
  ExpectHonesty(3000, [&](int run) -> Outcome {
    const bool pair = run % 3 == 0;
    const auto bench = std::make_unique<VskBench>(pair ? simulator::ConnectedChip::Vsk630
                                                       : simulator::ConnectedChip::Vsk830);
    std::vector<std::uint8_t> first, second;
    const auto load = [&] {
      first = RandomImage(random, 0);
      if (!pair) return bench->Load(first);
      second = RandomImage(random, 0);
      bench->Load(first, second);
    };
    const auto program = [&] { bench->isp.DoProgram(bench->view); };
    // Every other chip holds an older image, so that a refused erase matters.
    if (run % 2 == 0) {
      load();
      bench->EnterIspMode();
      program();
    }
    load();
    bench->EnterIspMode();
    const std::size_t size = first.size() + second.size();
    const bool sound = AddFaults(random, 8 + size / 128, size, 2, bench->board);
    program();

    const simulator::VskChip& chip = bench->board.vskChips[pair ? 1 : 0];
    const bool written =
        FlashEquals(chip.Bank(0), first) && (!pair || FlashEquals(chip.Bank(1), second));
    return {.sound = sound,
            .claimed = bench->view.operationText == "Write Ok",
            .written = written || bench->images.CodeCrc == 0};
  });
}
