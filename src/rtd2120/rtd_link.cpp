#include "rtd2120/rtd_link.h"

namespace tongxun2120 {
namespace {

bool Fits(int count, std::size_t cells) {
  return count >= 0 && static_cast<std::size_t>(count) <= cells;
}

}  // namespace

bool RtdTestBit(int value, int k) { return k >= 0 && k <= 7 && (value & (0x80 >> k)) != 0; }

int RtdBitsToByte(std::span<const std::int16_t, 8> bits) {
  int byte = 0;
  for (const std::int16_t bit : bits) byte = byte * 2 + bit;
  return byte;
}

void RtdLink::Start() {
  timing_.BitDelay();
  port_.SetSdaLow();  // SDA falls while SCL is high
  timing_.BitDelay();
  port_.SetSclLow();
}

void RtdLink::RepeatedStart() {
  timing_.BitDelay();
  port_.SetSclLow();
  timing_.BitDelay();
  port_.SetSclHigh();
  timing_.BitDelay();
  port_.SetSdaHigh();
  Start();
}

void RtdLink::TakeLinesLow() {
  timing_.BitDelay();
  port_.SetSclLow();
  timing_.BitDelay();
  port_.SetSdaLow();
}

void RtdLink::FinishStop() {
  timing_.BitDelay();
  port_.SetSclHigh();
  timing_.BitDelay();
  port_.SetSdaHigh();  // SDA rises while SCL is high
}

void RtdLink::SendByte(int byte) {
  for (int k = 0; k < 8; ++k) {
    timing_.BitDelay();
    port_.SetSclLow();
    timing_.BitDelay();
    if (RtdTestBit(byte, k)) {
      port_.SetSdaHigh();
    } else {
      port_.SetSdaLow();
    }
    timing_.BitDelay();
    port_.SetSclHigh();
  }
  timing_.BitDelay();
  port_.SetSclLow();
  timing_.BitDelay();
  port_.SetSdaHigh();
  timing_.BitDelay();
  port_.SetSclHigh();
}

bool RtdLink::SampleAcknowledge(int delays) {
  for (int i = 0; i < delays; ++i) timing_.BitDelay();
  return port_.SdaIsLow();
}

int RtdLink::ReceiveByte() {
  for (std::int16_t& bit : RtdRxBits) {
    port_.SetSclLow();
    timing_.BitDelay();
    port_.SetSclHigh();
    timing_.BitDelay();
    bit = port_.SdaIsLow() ? 0 : 1;
    timing_.BitDelay();
  }
  return RtdBitsToByte(RtdRxBits);
}

int RtdLink::RtdReadRegisters(int address, int registerNumber, int count) {
  if (!Fits(count, RtdRxBuf.size())) return kNotAcknowledged;
  port_.SetSdaHigh();
  port_.SetSclHigh();
  Start();
  for (const int byte : {address & 0xFE, registerNumber}) {
    SendByte(byte);
    if (!SampleAcknowledge(1)) return kNotAcknowledged;
  }
  RepeatedStart();
  SendByte(address | 0x01);
  timing_.BitDelay();  // its acknowledge is not sampled

  for (int i = 0; i < count; ++i) {
    if (i > 0) {
      timing_.BitDelay();
      port_.SetSclLow();
    }
    port_.SetSdaHigh();
    RtdRxBuf[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(ReceiveByte());
    timing_.BitDelay();
    port_.SetSclLow();
    const bool lastByte = i == count - 1;
    if (!lastByte) {
      timing_.BitDelay();
      port_.SetSdaLow();
    }
    timing_.BitDelay();
    port_.SetSclHigh();
    timing_.BitDelay();
  }
  TakeLinesLow();
  FinishStop();
  return kDone;
}

template <typename Cell>
int RtdLink::Write(std::span<const Cell> buffer, int count, int flags, int acknowledgeDelays) {
  if (!Fits(count, buffer.size())) return kNotAcknowledged;
  port_.SetSdaHigh();
  port_.SetSclHigh();
  if ((flags & kWithStart) != 0) Start();
  int result = kDone;
  for (const Cell byte : buffer.first(static_cast<std::size_t>(count))) {
    SendByte(byte);
    result = SampleAcknowledge(acknowledgeDelays) ? kDone : kNotAcknowledged;
  }
  timing_.ByteDelay();
  if ((flags & kWithStop) == 0) return result;
  TakeLinesLow();
  // A line that does not follow is not clocked: the STOP stays incomplete.
  if (port_.SdaIsLow()) FinishStop();
  return result;
}

int RtdLink::RtdWriteBytes(int count, int flags) {
  return Write(std::span<const std::int16_t>(RtdTxBuf), count, flags, 1);
}

int RtdLink::RtdWritePage(int count, int flags) {
  const auto index = static_cast<std::size_t>(RtdPageIndex);
  if (index >= kPageRows) return kNotAcknowledged;
  const std::span<const std::uint8_t> row(RtdPageTable[index]);
  return Write(row, count, flags, 3);
}

bool RtdLink::WriteRegister(int registerNumber, int value) {
  RtdTxBuf[0] = kIspSlave;
  RtdTxBuf[1] = static_cast<std::int16_t>(registerNumber);
  RtdTxBuf[2] = static_cast<std::int16_t>(value);
  return RtdWriteBytes(3, kWithStart | kWithStop) == kDone;
}

void RtdLink::WriteAddress(int registerNumber, int high, int low) {
  RtdTxBuf[0] = kAddrSlave;
  RtdTxBuf[1] = static_cast<std::int16_t>(registerNumber);
  RtdTxBuf[2] = static_cast<std::int16_t>(high);
  RtdTxBuf[3] = static_cast<std::int16_t>(low);
  RtdWriteBytes(4, kWithStart | kWithStop);
}

bool RtdLink::ReadStatus(int registerNumber) {
  return RtdReadRegisters(kIspSlave, registerNumber, 1) == kDone;
}

bool RtdLink::RtdWaitBitsClear(int registerNumber, int mask) {
  bool answered = ReadStatus(registerNumber);
  RtdPollCount = 0;
  while (true) {
    if (answered && (RtdRxBuf[0] & mask) == 0) return true;
    answered = ReadStatus(registerNumber);
    if (RtdPollCount > 5000) return false;
    ++RtdPollCount;
  }
}

bool RtdLink::RtdEnterIsp() {
  WriteRegister(kIspControl, kFirstBank);
  WriteRegister(kIspEntry, 0x00);
  return ReadStatus(kIspControl) && RtdRxBuf[0] == kFirstBank;
}

void RtdLink::RtdLeaveIsp() { WriteRegister(kIspControl, kLeave); }

}  // namespace tongxun2120
