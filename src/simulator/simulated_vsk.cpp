#include "simulator/simulated_vsk.h"

#include "text/hex_text.h"

namespace simulator {
namespace {

constexpr std::size_t kErasePageBytes = 128;
constexpr std::uint8_t kCrcReadAddress = 0x97;

enum Command : std::uint8_t {
  kSelectPage = 0x00,
  kErasePage = 0x30,
  kQuit = 0x48,
  kEraseAll = 0x68,
  kProgramBank0 = 0xA0,
  kProgramBank1 = 0xA1,
  kResetCrc = 0xD0,
};

constexpr std::uint16_t kCrcReset = 0xFFFF;

/// x^16 + x^15 + x^2 + 1, as the chip's shift register takes one byte, high bit first.
std::uint16_t FeedCrc(std::uint16_t crc, std::uint8_t byte) {
  crc = static_cast<std::uint16_t>(crc ^ (byte << 8));
  for (int bit = 0; bit < 8; ++bit) {
    const bool carry = (crc & 0x8000) != 0;
    crc = static_cast<std::uint16_t>(crc << 1);
    if (carry) crc ^= 0x8005;
  }
  return crc;
}

}  // namespace

SimulatedVsk::SimulatedVsk(VskIdentity identity, const VskDataSheet& sheet, const Faults& faults)
    : SimulatedChip(sheet.banks, sheet.flashBytes, faults),
      identity_(std::move(identity)),
      sheet_(sheet) {}

std::string SimulatedVsk::EntryText() const {
  std::string text = "address " + fileop::HexByte(identity_.address) + ", codes";
  for (const std::uint8_t code : identity_.codes) text += " " + fileop::HexByte(code);
  return text;
}

void SimulatedVsk::OnUnplugged() {
  ispMode_ = false;
  busyPolls_ = 0;
  frame_ = Frame::None;
  expected_ = Expected::Nothing;
  crc_ = 0;
}

void SimulatedVsk::OnStart() {
  frame_ = Frame::None;
  byte_ = 0;
}

void SimulatedVsk::OnStop() {
  const bool allCodesCame = frame_ == Frame::Entry && byte_ + 1 == identity_.codes.size();
  if (allCodesCame) ispMode_ = true;
  const bool dataFrameEnded = frame_ == Frame::Data || frame_ == Frame::PageRead;
  if (dataFrameEnded && byte_ > 0) expected_ = Expected::Nothing;
  frame_ = Frame::None;
}

bool SimulatedVsk::OnAddress(std::uint8_t byte) {
  if (!ispMode_) return OpensEntry(byte);
  if (faults_.busyForEver && busyPolls_ > 0) return false;
  if (busyPolls_ > 0) {
    --busyPolls_;
    return false;
  }
  if (byte == kCrcReadAddress) {
    frame_ = Frame::CrcRead;
  } else if (byte == (CommandAddress() & 0xFE)) {
    frame_ = Frame::Command;
  } else if (byte == (identity_.address & 0xFE)) {
    frame_ = Frame::Data;
  } else if (byte == (identity_.address | 0x01) && expected_ == Expected::PageRead) {
    frame_ = Frame::PageRead;
  }
  return frame_ != Frame::None;
}

bool SimulatedVsk::OpensEntry(std::uint8_t address) {
  if (identity_.codes.empty() || address != (identity_.codes[0] & 0xFE)) return false;
  frame_ = Frame::Entry;
  return true;
}

bool SimulatedVsk::OnWrite(std::uint8_t byte) {
  switch (frame_) {
    case Frame::Entry:
      return OnEntryCode(byte);
    case Frame::Command:
      return OnCommand(byte);
    case Frame::Data:
      return OnData(byte);
    default:
      return false;
  }
}

bool SimulatedVsk::OnEntryCode(std::uint8_t byte) {
  const std::size_t code = byte_ + 1;
  if (code >= identity_.codes.size() || byte != identity_.codes[code]) {
    frame_ = Frame::None;
    return false;
  }
  ++byte_;
  return true;
}

bool SimulatedVsk::OnCommand(std::uint8_t byte) {
  if (byte_++ > 0) return OnArgument(byte);
  command_ = byte;
  switch (byte) {
    case kQuit:
      ispMode_ = false;
      frame_ = Frame::None;
      return true;
    case kResetCrc:
      crc_ = kCrcReset;
      return true;
    case kSelectPage:
    case kErasePage:
    case kEraseAll:
    case kProgramBank0:
      return true;
    case kProgramBank1:
      return banks_.size() > 1;
    default:
      return false;
  }
}

bool SimulatedVsk::OnArgument(std::uint8_t byte) {
  if (byte_ > 2) return false;
  switch (command_) {
    case kEraseAll:
      if (byte != 0) return false;
      for (Flash& bank : banks_) bank.EraseAll();
      expected_ = Expected::FollowUp;
      if (faults_.busyForEver) busyPolls_ = 1;
      return true;
    case kErasePage:
      if (byte >= sheet_.flashBytes / kErasePageBytes) return false;
      banks_[0].Erase(byte * kErasePageBytes, kErasePageBytes);
      expected_ = Expected::Nothing;
      busyPolls_ = 1;
      return true;
    case kProgramBank0:
      return SelectPage(0, byte, Expected::PageData);
    case kProgramBank1:
      return SelectPage(1, byte, Expected::PageData);
    case kSelectPage:
      return SelectPage(0, byte, Expected::PageRead);
    default:
      return false;
  }
}

bool SimulatedVsk::SelectPage(std::size_t bank, std::uint8_t page, Expected next) {
  if (page >= sheet_.flashBytes / sheet_.pageBytes) return false;
  bank_ = bank;
  page_ = page;
  expected_ = next;
  return true;
}

bool SimulatedVsk::OnData(std::uint8_t byte) {
  const std::size_t index = byte_;
  const bool leader = index == 0;
  if (leader && byte != 0) return false;
  if (!leader && expected_ == Expected::PageData) {
    if (index > sheet_.pageBytes) return false;
    const std::uint8_t stored = banks_[bank_].Program(page_ * sheet_.pageBytes + index - 1, byte);
    crc_ = FeedCrc(crc_, stored);
  } else if (!leader && !(expected_ == Expected::FollowUp && index == 1 && byte == 0)) {
    return false;
  }
  ++byte_;
  return true;
}

std::uint8_t SimulatedVsk::OnRead() {
  const std::size_t index = byte_++;
  if (frame_ == Frame::PageRead) {
    return banks_[bank_].Cells()[page_ * sheet_.pageBytes + index % sheet_.pageBytes];
  }
  if (index == 3) return static_cast<std::uint8_t>(crc_ >> 8);
  if (index == 4) return static_cast<std::uint8_t>(crc_ & 0xFF);
  return 0;
}

}  // namespace simulator
