// The ports of GPIO lines that there are, for a list. `TakeGpio` is declared in port_access.h.
#pragma once

#include <filesystem>
#include <vector>

#include "platform/linux/port_system.h"
#include "platform/port_io.h"

/// The ports that "GpioPort.csv" in `folder` describes, in its order, and then the machine's GPIO
/// chips, which have no address. Requests no line.
std::vector<PortNote> GpioPorts(PortSystem& system, const std::filesystem::path& folder);
