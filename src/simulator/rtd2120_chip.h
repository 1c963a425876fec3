// A simulated RTD2120, as its ISP registers behave on the bus.
#pragma once

#include <cstdint>
#include <vector>

#include "simulator/faults.h"
#include "simulator/simulated_chip.h"

namespace simulator {

/// Answers at 94 (ISP registers) and 96 (address registers, written only); an access names the
/// register first. While it is busy it takes no data. Before ISP mode only the two registers that
/// open it can be written, and all read 00.
///
///   90   40 | 60 first or second bank; C0 erases both; 00 leaves ISP mode. Reads back with bit 7
///        while erasing, bit 4 while a page is programmed, bit 3 while the CRC range is set
///   36   00 completes the entry into ISP mode
///   94   page data: programmed from the start address on when the STOP comes
///   A2   80 requests the CRC; bit 7 while it runs, bit 6 when it is done
///   A3   the CRC
///   92   (at 96) start address, high and low byte
///   A0   (at 96) last address that the CRC covers
class Rtd2120Chip final : public SimulatedChip {
 public:
  explicit Rtd2120Chip(const Faults& faults);

  int FirstBankNumber() const override { return 1; }
  std::string EntryText() const override { return "address 94, registers 90 and 36"; }

  void OnStart() override;
  void OnStop() override;
  bool OnAddress(std::uint8_t byte) override;
  bool OnWrite(std::uint8_t byte) override;
  std::uint8_t OnRead() override;
  void OnUnplugged() override;

 private:
  bool OnControl(std::uint8_t value);
  bool OnAddressRegister(std::uint8_t value, std::size_t index);
  void ProgramPage();
  void BecomeBusy(std::uint8_t bit, int polls);
  std::uint8_t ControlStatus();
  std::uint8_t CrcStatus();
  std::uint8_t ComputeCrc() const;

  bool entryBegun_ = false;   // 90 = 40 came, 36 = 00 not yet
  std::uint8_t control_ = 0;  // last value written to 90
  std::uint8_t busyBit_ = 0;  // of the operation that runs
  int busyPolls_ = 0;         // readings that will still show it
  int crcPolls_ = 0;
  bool crcRequested_ = false;
  std::size_t bank_ = 0;
  std::uint16_t start_ = 0;
  std::uint16_t crcEnd_ = 0;

  std::uint8_t slave_ = 0;          // addressed in this frame
  std::size_t byte_ = 0;            // bytes after the address byte
  std::uint8_t register_ = 0;       // named by this frame, or by the one before a repeated START
  std::vector<std::uint8_t> page_;  // data of the page write that is coming in
};

}  // namespace simulator
