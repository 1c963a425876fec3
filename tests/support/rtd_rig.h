// The RTD2120 side of the tool on a simulated board, for whole runs over the wire.
#pragma once

#include <algorithm>
#include <span>

#include "rtd2120/crc8.h"
#include "rtd2120/rtd_images.h"
#include "rtd2120/rtd_link.h"
#include "rtd2120/rtd_operations.h"
#include "rtd2120/rtd_writer.h"
#include "support/board_rig.h"
#include "support/rtd_transcript.h"

using tongxun2120::Crc8;

struct RtdRig : BoardRig {
  RtdRig() : BoardRig(Wiring(), {}, simulator::ConnectedChip::Rtd2120) {}

  void Load(tongxun2120::Bank bank, const std::vector<std::uint8_t>& image) {
    const tongxun2120::BankImage target = images.Of(bank);
    target.cells.fill(0xFF);
    std::copy(image.begin(), image.end(), target.cells.begin());
    target.maximum = static_cast<std::int32_t>(image.size()) - 1;
    target.loaded = true;
  }

  tongxun2120::RtdImages images;
  tongxun2120::RtdLink link{port, timing};
  tongxun2120::RtdOperations operations{link, ticks, images};
  RunReport report{ticks};
  tongxun2120::RtdWriter writer{port, link, operations, timing, images, report};
  RtdTranscript view;
};
