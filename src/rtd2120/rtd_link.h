// The RTD2120's ISP protocol on the bus. Clocks every bit itself from the line operations and the
// bit delays; knows registers, but nothing of erasing or programming.
//
// A write keeps SCL high after each acknowledge clock; a missing acknowledge does not stop it.
// Addresses, registers and values are 0..255.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "bus/bus_timing.h"
#include "bus/iic_port.h"
#include "rtd2120/rtd_protocol.h"

namespace tongxun2120 {

/// Flags of a write: which conditions frame it.
inline constexpr int kWithStart = 1;
inline constexpr int kWithStop = 2;

inline constexpr int kDone = 0;
inline constexpr int kNotAcknowledged = 1;

class RtdLink {
 public:
  static constexpr std::size_t kPageRows = 257;     // 256 pages and one spare
  static constexpr std::size_t kPageColumns = 259;  // address, register, 256 data bytes, one spare

  RtdLink(IicPort& port, tongxun::BusTiming& timing) : port_(port), timing_(timing) {}

  std::array<std::int16_t, 21> RtdTxBuf{};  // one write as it goes out: address, register, data
  std::array<std::int16_t, 21> RtdRxBuf{};  // bytes of one read; unchanged by a refused one
  std::array<std::int16_t, 8> RtdRxBits{};  // the byte being received, most significant bit first
  /// Row g is the whole transaction that writes page g.
  std::array<std::array<std::uint8_t, kPageColumns>, kPageRows> RtdPageTable{};
  std::int16_t RtdPageIndex = 0;  // the row that `RtdWritePage` sends, 0..256
  std::int32_t RtdPollCount = 0;  // of `RtdWaitBitsClear`, 0..5001

  // A count or a row beyond the buffer is `kNotAcknowledged`, and touches no line.

  /// S address&FE register Sr address|01 [count bytes] N P     count 0..21
  /// `kNotAcknowledged` when the address or the register byte was refused: no STOP then.
  int RtdReadRegisters(int address, int registerNumber, int count);
  /// [S] RtdTxBuf[0..count-1] [P]     count 0..21
  /// The last byte's acknowledge; `kDone` without a byte.
  int RtdWriteBytes(int count, int flags);
  /// The same with the row `RtdPageIndex` of the page table, count 0..259, waiting longer for each
  /// acknowledge.
  int RtdWritePage(int count, int flags);

  /// S 94 register value P     True when the value was acknowledged.
  bool WriteRegister(int registerNumber, int value);
  /// S 96 register high low P
  void WriteAddress(int registerNumber, int high, int low);
  /// Reads one register of the ISP slave into `RtdRxBuf[0]`. False when it was not acknowledged.
  bool ReadStatus(int registerNumber);

  /// True once the bits of `mask` read 0 in a register of the ISP slave; false after 5,003 reads.
  /// A read that was not acknowledged counts as busy.
  bool RtdWaitBitsClear(int registerNumber, int mask);

  /// S 94 90 40 P, S 94 36 00 P, S 94 90 Sr 95 [40] N P
  /// True when the chip is in ISP mode and answers.
  bool RtdEnterIsp();
  /// S 94 90 00 P
  void RtdLeaveIsp();

 private:
  // What each step expects of the lines -> what it leaves.
  void Start();          // both high -> both low
  void RepeatedStart();  // SCL high, SDA released -> both low
  void TakeLinesLow();   // SCL high -> both low; first half of a STOP
  void FinishStop();     // both low -> both high
  /// Eight data clocks and the acknowledge clock. Any levels -> SCL high, SDA released.
  void SendByte(int byte);
  bool SampleAcknowledge(int delays);  // SCL high, SDA released -> the same
  int ReceiveByte();                   // SDA released -> SCL high, SDA released
  template <typename Cell>
  int Write(std::span<const Cell> buffer, int count, int flags, int acknowledgeDelays);

  IicPort& port_;
  tongxun::BusTiming& timing_;
};

/// True when bit k of the byte is 1, k = 0 being the most significant; false for k outside 0..7.
bool RtdTestBit(int value, int k);
/// The byte whose bits are given, most significant first.
int RtdBitsToByte(std::span<const std::int16_t, 8> bits);

}  // namespace tongxun2120
