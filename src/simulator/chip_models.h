// The chips that can be plugged into the simulated cable. A VSK variant is a row of the table.
#pragma once

#include <array>
#include <cstddef>

namespace simulator {

enum class ConnectedChip { None, Vsk830, Vsk630, Rtd2120 };

/// What the VSK chips differ in, as their data sheets would give it: kept apart from what the tool
/// believes of them.
struct VskDataSheet {
  ConnectedChip chip;
  const char* name;
  int banks;
  std::size_t pageBytes;   // taken by one data frame, and given by one page read
  std::size_t flashBytes;  // of each bank
};

inline constexpr std::array kVskDataSheets{
    VskDataSheet{ConnectedChip::Vsk830, "VSK830", 1, 256, 65536},
    VskDataSheet{ConnectedChip::Vsk630, "VSK630", 2, 256, 65536},
};

}  // namespace simulator
