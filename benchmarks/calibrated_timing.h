// The bus delays as this machine calibrates them.
#pragma once

#include "bus/bus_timing.h"

struct Calibration {
  double seconds;  // that it held the thread for
  std::int32_t tickPollCount;
  std::int32_t bitDelayCount;  // at speed factor 2
  std::int32_t byteDelayCount;
};

/// Calibrates five times at the first call, at the default speed factor; the one in the middle.
const Calibration& MedianCalibration();
