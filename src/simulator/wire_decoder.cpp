#include "simulator/wire_decoder.h"

namespace simulator {

void WireDecoder::Connect(I2cTarget* target) {
  if (target_ != nullptr) target_->OnUnplugged();
  target_ = target;
  phase_ = Phase::Idle;
  pullsLow_ = false;
  wasPlugged_ = false;
}

void WireDecoder::OnLevels(bool sda, bool scl) {
  const bool sdaBefore = sda_;
  const bool sclBefore = scl_;
  sda_ = sda;
  scl_ = scl;
  NoticeUnplugging();
  if (sclBefore && scl) {
    if (sdaBefore && !sda) Start();
    if (!sdaBefore && sda) Stop();
  } else if (!sclBefore && scl) {
    ClockRose(sda);
  } else if (sclBefore && !scl) {
    ClockFell();
  }
}

void WireDecoder::NoticeUnplugging() {
  const bool plugged = Plugged();
  if (wasPlugged_ && !plugged && target_ != nullptr) {
    target_->OnUnplugged();
    pullsLow_ = false;
  }
  wasPlugged_ = plugged;
}

void WireDecoder::Start() {
  ++frames_;
  NoticeUnplugging();
  if (listener_ != nullptr) listener_->Started(inTransfer_);
  inTransfer_ = true;
  phase_ = Phase::Receive;
  addressed_ = true;
  byteIndex_ = 0;
  bits_ = 0;
  shift_ = 0;
  pullsLow_ = false;
  if (Plugged()) target_->OnStart();
}

void WireDecoder::Stop() {
  if (inTransfer_ && listener_ != nullptr) listener_->Stopped();
  inTransfer_ = false;
  phase_ = Phase::Idle;
  pullsLow_ = false;
  if (Plugged()) target_->OnStop();
}

void WireDecoder::ClockRose(bool sda) {
  if (phase_ == Phase::Receive) {
    shift_ = static_cast<std::uint8_t>(shift_ << 1 | (sda ? 1 : 0));
    ++bits_;
  } else if (phase_ == Phase::AwaitAcknowledge) {
    const bool acknowledged = !sda;
    if (listener_ != nullptr) listener_->Byte(shift_, true, acknowledged);
    if (!acknowledged) phase_ = Phase::Idle;
  }
}

void WireDecoder::ClockFell() {
  switch (phase_) {
    case Phase::Idle:
      break;
    case Phase::Receive: {
      if (bits_ < 8) break;
      addressed_ = addressed_ && Accept(shift_);
      if (listener_ != nullptr) listener_->Byte(shift_, false, addressed_);
      pullsLow_ = addressed_;
      phase_ = Phase::SendAcknowledge;
      reading_ = addressed_ && byteIndex_ == 0 && (shift_ & 1) != 0;
      ++byteIndex_;
      break;
    }
    case Phase::SendAcknowledge:
      pullsLow_ = false;
      bits_ = 0;
      shift_ = 0;
      phase_ = Phase::Receive;
      if (reading_) BeginSending();
      break;
    case Phase::Send:
      ++bits_;
      pullsLow_ = bits_ < 8 && (shift_ >> (7 - bits_) & 1) == 0;
      if (bits_ == 8) phase_ = Phase::AwaitAcknowledge;
      break;
    case Phase::AwaitAcknowledge:
      BeginSending();
      break;
  }
}

bool WireDecoder::Accept(std::uint8_t byte) {
  if (!Plugged()) return false;
  const auto& refused = faults_.refusedByte;
  if (refused && refused->frame == frames_ && refused->byte == byteIndex_) return false;
  return byteIndex_ == 0 ? target_->OnAddress(byte) : target_->OnWrite(byte);
}

void WireDecoder::BeginSending() {
  shift_ = Plugged() ? target_->OnRead() : 0xFF;
  bits_ = 0;
  pullsLow_ = (shift_ & 0x80) == 0;
  phase_ = Phase::Send;
}

}  // namespace simulator
