// What every simulated chip shows of itself.
#pragma once

#include <string>

#include "simulator/flash.h"
#include "simulator/i2c_target.h"

namespace simulator {

class SimulatedChip : public I2cTarget {
 public:
  virtual bool InIspMode() const = 0;
  virtual int Banks() const = 0;
  /// The number by which the chip's maker calls its first bank.
  virtual int FirstBankNumber() const { return 0; }
  /// `bank`: 0 or 1.
  virtual const Flash& Bank(int bank) const = 0;
  /// How ISP mode is entered, for instance "address 94, codes 5A A5".
  virtual std::string EntryText() const = 0;
};

}  // namespace simulator
