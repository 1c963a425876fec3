// The bus side of an I2C slave: turns line levels into START, bytes, acknowledges and STOP, and
// drives SDA for the target.
#pragma once

#include <cstdint>

#include "simulator/faults.h"
#include "simulator/i2c_target.h"

namespace simulator {

/// Told what passes on the bus, for records and counters.
class BusListener {
 public:
  virtual ~BusListener() = default;
  virtual void Started(bool repeated) = 0;
  virtual void Byte(std::uint8_t value, bool fromTarget, bool acknowledged) = 0;
  virtual void Stopped() = 0;
};

class WireDecoder {
 public:
  explicit WireDecoder(const Faults& faults) : faults_(faults) {}

  /// The chip on the wire; null for none.
  void Connect(I2cTarget* target);
  void ListenTo(BusListener* listener) { listener_ = listener; }

  /// The levels that the bus has now, with the target's own pull already in `sda`.
  void OnLevels(bool sda, bool scl);
  bool PullsSdaLow() const { return pullsLow_ && Plugged(); }

  std::uint64_t FramesSeen() const { return frames_; }

 private:
  enum class Phase { Idle, Receive, SendAcknowledge, Send, AwaitAcknowledge };

  bool Plugged() const {
    const std::uint64_t last = faults_.unpluggedAfterFrame;
    return target_ != nullptr && last != 0 && frames_ <= last;
  }
  void NoticeUnplugging();
  void Start();
  void Stop();
  void ClockRose(bool sda);
  void ClockFell();
  bool Accept(std::uint8_t byte);
  void BeginSending();

  const Faults& faults_;
  I2cTarget* target_ = nullptr;
  BusListener* listener_ = nullptr;

  bool sda_ = true;
  bool scl_ = true;
  bool pullsLow_ = false;
  bool wasPlugged_ = false;
  std::uint64_t frames_ = 0;

  Phase phase_ = Phase::Idle;
  bool inTransfer_ = false;    // between START and STOP
  bool addressed_ = false;     // every byte of this frame was acknowledged so far
  bool reading_ = false;       // the address byte asked for a read
  std::size_t byteIndex_ = 0;  // within the frame; 0 is the address
  int bits_ = 0;               // clocked in or out of `shift_` so far
  std::uint8_t shift_ = 0;
};

}  // namespace simulator
