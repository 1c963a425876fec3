#include "simulator/rtd2120_chip.h"

namespace simulator {
namespace {

constexpr std::uint8_t kIspSlave = 0x94;
constexpr std::uint8_t kAddrSlave = 0x96;

enum Register : std::uint8_t {
  kEntry = 0x36,
  kControl = 0x90,
  kStartAddress = 0x92,
  kPageData = 0x94,
  kCrcEnd = 0xA0,
  kCrcControl = 0xA2,
  kCrcResult = 0xA3,
};

constexpr std::uint8_t kErasing = 0x80;
constexpr std::uint8_t kProgramming = 0x10;
constexpr std::uint8_t kSettingRange = 0x08;

constexpr std::size_t kPageBytes = 256;
constexpr std::size_t kBankBytes = 65536;

}  // namespace

Rtd2120Chip::Rtd2120Chip(const Faults& faults) : SimulatedChip(2, kBankBytes, faults) {}

void Rtd2120Chip::OnUnplugged() {
  ispMode_ = entryBegun_ = crcRequested_ = false;
  control_ = busyBit_ = slave_ = 0;
  busyPolls_ = crcPolls_ = 0;
  bank_ = 0;
  page_.clear();
}

void Rtd2120Chip::OnStart() {
  slave_ = 0;
  byte_ = 0;
  page_.clear();
}

bool Rtd2120Chip::OnAddress(std::uint8_t byte) {
  const bool known = byte == kIspSlave || byte == (kIspSlave | 1) || byte == kAddrSlave;
  if (known) slave_ = byte;
  return known;
}

bool Rtd2120Chip::OnWrite(std::uint8_t byte) {
  const std::size_t index = byte_++;
  if (index == 0) {
    register_ = byte;
    const bool opensIsp = slave_ == kIspSlave && (byte == kControl || byte == kEntry);
    return ispMode_ || opensIsp;
  }
  if (busyPolls_ > 0) return false;
  if (slave_ == kAddrSlave) return OnAddressRegister(byte, index - 1);
  switch (register_) {
    case kControl:
      return OnControl(byte);
    case kEntry:
      ispMode_ = ispMode_ || (entryBegun_ && byte == 0);
      return byte == 0;
    case kPageData:
      if (page_.size() == kPageBytes) return false;
      page_.push_back(byte);
      return true;
    case kCrcControl:
      crcRequested_ = byte == 0x80;
      crcPolls_ = 2;
      return crcRequested_;
    default:
      return false;
  }
}

bool Rtd2120Chip::OnControl(std::uint8_t value) {
  if (!ispMode_) {
    entryBegun_ = value == 0x40;
    control_ = value;
    return entryBegun_;
  }
  control_ = value;
  switch (value) {
    case 0x40:
      bank_ = 0;
      return true;
    case 0x60:
      bank_ = 1;
      return true;
    case 0xC0:
      for (Flash& bank : banks_) bank.EraseAll();
      BecomeBusy(kErasing, 3);
      return true;
    case 0x00:
      ispMode_ = entryBegun_ = false;
      return true;
    default:
      return false;
  }
}

bool Rtd2120Chip::OnAddressRegister(std::uint8_t value, std::size_t index) {
  if (index > 1 || (register_ != kStartAddress && register_ != kCrcEnd)) return false;
  std::uint16_t& address = register_ == kStartAddress ? start_ : crcEnd_;
  address = static_cast<std::uint16_t>(index == 0 ? value << 8 : (address & 0xFF00) | value);
  if (register_ == kCrcEnd && index == 1) BecomeBusy(kSettingRange, 1);
  return true;
}

void Rtd2120Chip::OnStop() {
  if (!page_.empty()) ProgramPage();
  slave_ = 0;
}

void Rtd2120Chip::ProgramPage() {
  for (std::size_t i = 0; i < page_.size(); ++i) {
    banks_[bank_].Program((start_ + i) % kBankBytes, page_[i]);
  }
  page_.clear();
  BecomeBusy(kProgramming, 2);
}

void Rtd2120Chip::BecomeBusy(std::uint8_t bit, int polls) {
  busyBit_ = bit;
  busyPolls_ = polls;
}

std::uint8_t Rtd2120Chip::OnRead() {
  if (!ispMode_) return 0;
  if (register_ == kControl) return ControlStatus();
  if (register_ == kCrcControl) return CrcStatus();
  if (register_ == kCrcResult) return crcRequested_ && crcPolls_ == 0 ? ComputeCrc() : 0;
  return 0;
}

/// The erase bit of the control value itself is not read back.
std::uint8_t Rtd2120Chip::ControlStatus() {
  const auto idle = static_cast<std::uint8_t>(control_ & 0x60);
  if (busyPolls_ == 0) return idle;
  if (!faults_.busyForEver) --busyPolls_;
  return idle | busyBit_;
}

std::uint8_t Rtd2120Chip::CrcStatus() {
  if (!crcRequested_) return 0;
  if (crcPolls_ == 0) return 0x40;
  if (!faults_.busyForEver) --crcPolls_;
  return 0x80;
}

/// Bit by bit, as a shift register does.
std::uint8_t Rtd2120Chip::ComputeCrc() const {
  unsigned crc = 0;
  for (std::size_t a = start_; a <= crcEnd_; ++a) {
    for (int bit = 7; bit >= 0; --bit) {
      const unsigned in = banks_[bank_].Cells()[a] >> bit & 1U;
      const bool feedback = ((crc >> 7) ^ in) != 0;
      crc = (crc << 1 & 0xFF) ^ (feedback ? 0x07U : 0U);
    }
  }
  return static_cast<std::uint8_t>(crc);
}

}  // namespace simulator
