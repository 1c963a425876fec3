#include "bus/i2c_master.h"

namespace tongxun {

void I2cMaster::I2cStart() {
  ReleaseBus();
  port_.SetSdaLow();  // SDA falls while SCL is high
  timing_.BitDelay();
  port_.SetSclLow();
  timing_.BitDelay();
}

void I2cMaster::I2cStop() {
  timing_.BitDelay();
  port_.SetSdaHigh();
  timing_.BitDelay();
  port_.SetSdaLow();
  port_.SetSclHigh();
  timing_.BitDelay();
  port_.SetSdaHigh();  // SDA rises while SCL is high
}

void I2cMaster::ReleaseBus() {
  port_.SetSdaHigh();
  port_.SetSclHigh();
  timing_.BitDelay();
}

void I2cMaster::I2cWriteBit(int bit) {
  port_.SetSclLow();
  timing_.BitDelay();
  if (bit == 1) {
    port_.SetSdaHigh();
  } else {
    port_.SetSdaLow();
  }
  timing_.BitDelay();
  port_.SetSclHigh();
  timing_.BitDelay();
  port_.SetSclLow();
  timing_.BitDelay();
}

bool I2cMaster::AcknowledgeClock() {
  port_.SetSdaHigh();
  timing_.BitDelay();
  port_.SetSclHigh();
  timing_.BitDelay();
  const bool acknowledged = port_.SdaIsLow();
  port_.SetSclLow();
  timing_.ByteDelay();
  return acknowledged;
}

bool I2cMaster::I2cWriteByte(int byte) {
  for (std::size_t i = 0; i < TxBits.size(); ++i) {
    const int place = 0x80 >> i;
    TxBits[i] = byte / place == 1 ? 1 : 0;
    byte -= TxBits[i] * place;
  }
  for (const std::int16_t bit : TxBits) I2cWriteBit(bit);
  return AcknowledgeClock();
}

bool I2cMaster::I2cReadBit() {
  timing_.BitDelay();
  port_.SetSclHigh();
  timing_.BitDelay();
  const bool low = port_.SdaIsLow();
  port_.SetSclLow();
  timing_.BitDelay();
  return !low;
}

int I2cMaster::I2cReadByte(int ackBit) {
  int byte = 0;
  for (std::size_t k = RxBits.size(); k-- > 0;) {
    RxBits[k] = I2cReadBit() ? 1 : 0;
    byte |= RxBits[k] << k;
  }
  I2cWriteBit(ackBit);
  port_.SetSdaHigh();
  return byte;
}

}  // namespace tongxun
