// Compares what the windows claim with the flash of the chip that is plugged in.
#pragma once

#include <QString>

#include "simulator/simulated_board.h"
#include "soak/crc_range.h"
#include "soak/tally.h"
#include "tool/tool.h"

/// Whether an image is loaded for the chip that is selected and fits the one that is plugged in.
bool ImageFits(const Tool& tool, const simulator::SimulatedBoard& board);

/// A VSK run ended with "Write Ok".
void JudgeWriteOk(Tool& tool, simulator::SimulatedBoard& board, Tally& tally);

/// An RTD2120 run left `status` in its box: each "CRC OK." in it is a claim for the bank named last
/// before it.
void JudgeCrcOk(const QString& status, Tool& tool, simulator::SimulatedBoard& board,
                const CrcRange& range, Tally& tally);
