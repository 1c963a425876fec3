// The bit-banged I2C master: START, STOP, bytes out with acknowledge, bytes in.
// Drives SCL without reading it back: no clock stretching, no arbitration, no time-out.
#pragma once

#include <array>
#include <cstdint>

#include "bus/bus_timing.h"
#include "bus/iic_port.h"

namespace tongxun {

class I2cMaster {
 public:
  I2cMaster(IicPort& port, BusTiming& timing) : port_(port), timing_(timing) {}

  std::array<std::int16_t, 8> TxBits{};  // the byte being written, most significant bit first
  std::array<std::int16_t, 8> RxBits{};  // the byte being read, bit k at index k

  /// START; leaves SCL and SDA low.
  void I2cStart();
  /// STOP; leaves SCL and SDA high.
  void I2cStop();

  /// One clock with SDA high for `bit` 1 and low for any other value.
  void I2cWriteBit(int bit);
  /// Eight data clocks and the acknowledge clock. True when the slave acknowledged. Leaves SCL low
  /// and SDA released. `byte`: 0..255; a larger value goes out as 0x00.
  bool I2cWriteByte(int byte);

  /// One clock; true for a 1. SDA must already be released.
  bool I2cReadBit();
  /// Eight data clocks, then one that sends `ackBit`: 0 acknowledges (more bytes follow), 1 does
  /// not (last byte). Returns 0..255; 255 when nobody drives SDA.
  int I2cReadByte(int ackBit);

  /// Both lines released and one bit delay: makes room for a repeated START.
  void ReleaseBus();

 private:
  bool AcknowledgeClock();

  IicPort& port_;
  BusTiming& timing_;
};

}  // namespace tongxun
