#include "bus/port_address_file.h"

#include <array>
#include <cstdint>
#include <utility>

#include "platform/files.h"
#include "text/hex_text.h"

PortAddressFile::PortAddressFile(IicPort& port, const std::filesystem::path& folder)
    : port_(port), path_(PathOf(std::string(CutAtNul(PathText(folder)))) / "chipport.log") {}

void PortAddressFile::LoadPortAddress() {
  const FileContent file = ReadFile(path_, 2);
  const auto byteAt = [&](std::size_t i) {
    return i < file.bytes.size() ? static_cast<std::uint8_t>(file.bytes[i]) : 0;
  };
  port_.PortBase = byteAt(0) * 256 + byteAt(1);
  if (port_.PortBase != 0) return;
  port_.PortBase = IicPort::kDefaultPortBase;
  SavePortAddress();
}

bool PortAddressFile::SavePortAddress() {
  const std::array bytes{static_cast<std::uint8_t>(port_.PortBase / 256),
                         static_cast<std::uint8_t>(port_.PortBase % 256)};
  unsaved_ = WriteAtStart(path_, bytes);
  return unsaved_.empty();
}

std::string PortAddressFile::UnsavedNotice() {
  if (std::exchange(toldUnsaved_, true)) return {};
  return Unsaved(path_, unsaved_);
}
