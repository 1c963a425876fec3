// A flash array: erasing sets bits, programming only clears them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "simulator/faults.h"

namespace simulator {

class Flash {
 public:
  Flash(int bank, std::size_t bytes, const Faults& faults)
      : bank_(bank), faults_(faults), cells_(bytes, 0xFF) {}

  const std::vector<std::uint8_t>& Cells() const { return cells_; }
  /// Grows with every change; lets a display skip what it has already shown.
  std::uint64_t Version() const { return version_; }

  /// All cells from `first` on, at most `count`.
  void Erase(std::size_t first, std::size_t count) {
    for (std::size_t i = first; i < std::min(first + count, cells_.size()); ++i) cells_[i] = 0xFF;
    ++version_;
  }
  void EraseAll() { Erase(0, cells_.size()); }

  /// The cells hold `content` from now on, as far as it goes.
  void Restore(std::span<const std::uint8_t> content) {
    std::copy_n(content.begin(), std::min(content.size(), cells_.size()), cells_.begin());
    ++version_;
  }

  /// `address`: within the flash. Returns what the cell holds afterwards.
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
  std::vector<std::uint8_t> cells_;
  std::uint64_t version_ = 0;
};

}  // namespace simulator
