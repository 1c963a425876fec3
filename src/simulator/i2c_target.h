// What a simulated chip is to the wire: it is addressed, written to and read from, byte by byte.
#pragma once

#include <cstdint>

namespace simulator {

class I2cTarget {
 public:
  virtual ~I2cTarget() = default;

  virtual void OnStart() = 0;  // also a repeated START
  virtual void OnStop() = 0;
  /// First byte after a START; bit 0 set asks for a read. True to acknowledge.
  virtual bool OnAddress(std::uint8_t byte) = 0;
  virtual bool OnWrite(std::uint8_t byte) = 0;
  virtual std::uint8_t OnRead() = 0;
  /// Power lost: everything but the flash is as after power-up.
  virtual void OnUnplugged() = 0;
};

}  // namespace simulator
