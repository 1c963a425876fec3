// Random firmware files for the soak.
#pragma once

#include <random>
#include <string>

#include "support/temp_folder.h"

/// Writes a firmware file, or a pair of them, that a load command of the chip takes, and now and
/// then one that it has to refuse or that does not exist; returns its full name. One image in six
/// has a CRC of 0.
std::string RandomFile(std::mt19937& random, const TempFolder& folder, bool pair, bool crc8);
