// What every simulated chip shows of itself.
#pragma once

#include <string>
#include <vector>

#include "simulator/flash.h"
#include "simulator/i2c_target.h"

namespace simulator {

class SimulatedChip : public I2cTarget {
 public:
  bool InIspMode() const { return ispMode_; }
  int Banks() const { return static_cast<int>(banks_.size()); }
  /// The number by which the chip's maker calls its first bank.
  virtual int FirstBankNumber() const { return 0; }
  /// `bank`: 0 or 1.
  const Flash& Bank(int bank) const { return banks_[static_cast<std::size_t>(bank)]; }
  Flash& Bank(int bank) { return banks_[static_cast<std::size_t>(bank)]; }
  /// How ISP mode is entered, for instance "address 94, codes 5A A5".
  virtual std::string EntryText() const = 0;

 protected:
  SimulatedChip(int banks, std::size_t flashBytes, const Faults& faults) : faults_(faults) {
    for (int bank = 0; bank < banks; ++bank) banks_.emplace_back(bank, flashBytes, faults);
  }

  const Faults& faults_;
  std::vector<Flash> banks_;
  bool ispMode_ = false;
};

}  // namespace simulator
