#include "vsk/isp_frames.h"

#include <algorithm>

namespace tongxun {
namespace {

constexpr int kAcknowledge = 0;
constexpr int kLastByte = 1;

bool CanWrite(int count) {
  return count >= -1 && count < static_cast<int>(IspFrames::kBufferCells);
}
bool CanRead(int count) { return count >= 0 && count <= static_cast<int>(IspFrames::kBufferCells); }

}  // namespace

bool IspFrames::WriteFrame(int firstByte, int& count, bool stop) {
  if (!CanWrite(count)) return false;
  bus_.I2cStart();
  ++count;
  int byte = firstByte;
  for (std::size_t next = 0; count != 0; ++next) {
    if (!bus_.I2cWriteByte(byte)) {
      bus_.I2cStop();
      return false;
    }
    byte = IspTxBuf[next];
    --count;
  }
  if (stop) bus_.I2cStop();
  return true;
}

bool IspFrames::IspWriteFrame(int address, int& count, bool stop) {
  return WriteFrame(address & 0xFE, count, stop);
}

bool IspFrames::IspWriteFrameRaw(int address, int& count, bool stop) {
  return WriteFrame(address, count, stop);
}

bool IspFrames::Send(int address, std::initializer_list<std::int16_t> bytes,
                     AddressByte addressByte) {
  if (!CanWrite(static_cast<int>(bytes.size()))) return false;
  std::copy(bytes.begin(), bytes.end(), IspTxBuf.begin());
  return SendBuffer(address, static_cast<int>(bytes.size()), addressByte);
}

bool IspFrames::SendBuffer(int address, int count, AddressByte addressByte) {
  return addressByte == AddressByte::Unchanged ? IspWriteFrameRaw(address, count, true)
                                               : IspWriteFrame(address, count, true);
}

bool IspFrames::IspReadFrame(int address, int& count) {
  if (!CanRead(count)) return false;
  bus_.I2cStart();
  if (!bus_.I2cWriteByte(address | 0x01)) {
    bus_.I2cStop();
    return false;
  }
  for (std::size_t next = 0; count > 0; ++next) {
    --count;
    IspRxBuf[next] = bus_.I2cReadByte(count > 0 ? kAcknowledge : kLastByte);
  }
  bus_.I2cStop();
  return true;
}

bool IspFrames::IspWriteReadFrame(int address, int writeCount, int readCount) {
  if (!CanWrite(writeCount) || !CanRead(readCount)) return false;
  IspWriteFrame(address, writeCount, false);
  bus_.ReleaseBus();
  return IspReadFrame(address, readCount);
}

bool IspFrames::ReadHwCrc() {
  std::fill_n(IspRxBuf.begin(), kCrcReadBytes, 0);
  timing_.BitDelay();
  int count = kCrcReadBytes;
  const bool answered = IspReadFrame(kCrcReadAddress, count);
  HwCrc = 256 * IspRxBuf[3] + IspRxBuf[4];
  return answered;
}

}  // namespace tongxun
