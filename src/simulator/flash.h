// A flash array: erasing sets bits, programming only clears them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "simulator/faults.h"

namespace simulator {

class Flash {
 public:
  static constexpr std::size_t kBytes = 65536;

  Flash(int bank, const Faults& faults) : bank_(bank), faults_(faults) { cells_.fill(0xFF); }

  const std::array<std::uint8_t, kBytes>& Cells() const { return cells_; }
  /// Grows with every change; lets a display skip what it has already shown.
  std::uint64_t Version() const { return version_; }

  void Erase(std::size_t first, std::size_t count) {
    for (std::size_t i = first; i < first + count; ++i) cells_[i] = 0xFF;
    ++version_;
  }

  /// Returns what the cell holds afterwards.
  std::uint8_t Program(std::size_t address, std::uint8_t value) {
    const auto& flip = faults_.flippedBit;
    cells_[address] &= value;
    if (flip && flip->bank == bank_ && flip->address == address) {
      cells_[address] = static_cast<std::uint8_t>(cells_[address] ^ (1U << flip->bit));
    }
    ++version_;
    return cells_[address];
  }

 private:
  const int bank_;
  const Faults& faults_;
  std::array<std::uint8_t, kBytes> cells_;
  std::uint64_t version_ = 0;
};

}  // namespace simulator
