// A simulated VSK chip, as its ISP slave behaves on the bus.
#pragma once

#include <cstdint>
#include <vector>

#include "simulator/chip_models.h"
#include "simulator/faults.h"
#include "simulator/simulated_chip.h"

namespace simulator {

struct VskIdentity {
  std::uint8_t address = 0x94;                  // A: data frames; commands go to A | 0x02
  std::vector<std::uint8_t> codes{0x5A, 0xA5};  // security codes that open ISP mode, 1..4
};

/// Silent until one frame brings all security codes in order. In ISP mode:
///
///   S C 68 00 P         erases all; the follow-up S A 00 00 P is acknowledged
///   S C 30 p P          erases 128-byte page p; busy, so the next frame is not acknowledged
///   S C D0 P            resets the CRC register to FFFF
///   S C A0|A1 p P       selects bank and page; S A 00 data.. P programs and feeds the CRC
///   S C 00 p P          selects a page; S A 00 Sr A|01 [its bytes] P reads it
///   S C 48              leaves ISP mode at once
///   S 97 [5 bytes] P    the last two bytes are the CRC
class SimulatedVsk final : public SimulatedChip {
 public:
  SimulatedVsk(VskIdentity identity, const VskDataSheet& sheet, const Faults& faults);

  std::string EntryText() const override;

  void OnStart() override;
  void OnStop() override;
  bool OnAddress(std::uint8_t byte) override;
  bool OnWrite(std::uint8_t byte) override;
  std::uint8_t OnRead() override;
  void OnUnplugged() override;

 private:
  enum class Frame { None, Entry, Command, Data, PageRead, CrcRead };
  /// What the next data frame is for.
  enum class Expected { Nothing, FollowUp, PageData, PageRead };

  bool OpensEntry(std::uint8_t address);
  bool OnEntryCode(std::uint8_t byte);
  bool OnCommand(std::uint8_t byte);
  bool OnArgument(std::uint8_t byte);
  bool OnData(std::uint8_t byte);
  bool SelectPage(std::size_t bank, std::uint8_t page, Expected next);
  std::uint8_t CommandAddress() const { return identity_.address | 0x02; }

  const VskIdentity identity_;
  const VskDataSheet sheet_;
  int busyPolls_ = 0;      // addresses that will not be acknowledged yet
  std::uint16_t crc_ = 0;  // undefined until it is reset

  Frame frame_ = Frame::None;
  std::size_t byte_ = 0;      // bytes after the address byte in this frame
  std::uint8_t command_ = 0;  // first byte of a command frame
  Expected expected_ = Expected::Nothing;
  std::size_t bank_ = 0;  // selected by a page-program or page-select command
  std::size_t page_ = 0;
};

}  // namespace simulator
