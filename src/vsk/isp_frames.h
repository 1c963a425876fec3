// The frames of the VSK chips' ISP slave: byte transactions between two shared buffers and the bus.
// Every transaction is complete when it returns; nothing is retried here.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>

#include "bus/bus_timing.h"
#include "bus/i2c_master.h"
#include "vsk/vsk_protocol.h"

namespace tongxun {

/// What a write frame does to bit 0 of the address that it is given.
enum class AddressByte { BitZeroCleared, Unchanged };

class IspFrames {
 public:
  static constexpr std::size_t kBufferCells = 513;

  IspFrames(I2cMaster& bus, BusTiming& timing) : bus_(bus), timing_(timing) {}

  std::array<std::int16_t, kBufferCells> IspTxBuf{};  // bytes that follow the address byte
  std::array<std::int32_t, kBufferCells> IspRxBuf{};  // bytes received, first one at index 0

  /// ISP entry parameters, from `kEntryAddress` on. All 0 until the parameter file is read.
  std::array<std::int16_t, kEntryCells> IspParams{};

  /// CRC read back from the chip, 0..0xFFFF; -1 before the first read.
  std::int32_t HwCrc = -1;

  /// Slave address of the frames that carry data.
  int DataAddress() const { return IspParams[kEntryAddress]; }
  /// Slave address of the frames that carry a command.
  int CommandAddress() const { return DataAddress() | 0x02; }

  // All frames below return true when every byte was acknowledged; a missing acknowledge ends the
  // frame with a STOP. `count` is consumed: 0 after a complete frame. A count that the buffers
  // cannot hold returns false and touches no line.

  /// S address&FE IspTxBuf[0..count-1] [P]     count -1..512; -1 sends no byte at all
  bool IspWriteFrame(int address, int& count, bool stop);
  /// The same with the address byte unchanged.
  bool IspWriteFrameRaw(int address, int& count, bool stop);
  /// S address bytes.. P     True when all were acknowledged. At most 512 bytes, which are put into
  /// `IspTxBuf` first.
  bool Send(int address, std::initializer_list<std::int16_t> bytes,
            AddressByte addressByte = AddressByte::BitZeroCleared);
  /// The same with what `IspTxBuf` holds, `count` bytes.
  bool SendBuffer(int address, int count, AddressByte addressByte);

  /// S address|01 [IspRxBuf[0..count-1]] P     count 0..513
  bool IspReadFrame(int address, int& count);
  /// S address&FE bytes.. Sr address|01 [bytes..] P     result: the read phase's
  bool IspWriteReadFrame(int address, int writeCount, int readCount);

  /// S 97 [5 bytes] P: `HwCrc` from the last two; 0 when nobody answers, which returns false.
  bool ReadHwCrc();

 private:
  bool WriteFrame(int firstByte, int& count, bool stop);

  I2cMaster& bus_;
  BusTiming& timing_;
};

}  // namespace tongxun
