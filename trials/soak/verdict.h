// Compares what a run claims with the flash of the chip that is plugged in.
#pragma once

#include "simulator/simulated_board.h"
#include "soak/crc_range.h"
#include "soak/tally.h"
#include "tool/tool.h"

/// Whether an image is loaded for the chip that is selected and fits the one that is plugged in.
bool ImageFits(const Tool& tool, const simulator::SimulatedBoard& board);

/// A VSK run ended with "Write Ok".
void JudgeWriteOk(Tool& tool, simulator::SimulatedBoard& board, Tally& tally);

/// An RTD2120 run found the bank's CRC, 0 or 1, to be the image's.
void JudgeCrcOk(int bank, Tool& tool, simulator::SimulatedBoard& board, const CrcRange& range,
                Tally& tally);
