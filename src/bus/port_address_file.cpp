#include "bus/port_address_file.h"

#include <array>
#include <cstdint>
#include <utility>

#include "platform/files.h"
#include "text/hex_text.h"

PortAddressFile::PortAddressFile(IicPort& port, const std::filesystem::path& folder)
    : port_(port), path_(PathOf(std::string(CutAtNul(PathText(folder)))) / "chipport.log") {}

void PortAddressFile::LoadPortAddress() {
  const Result<std::string> file = ReadFile(path_, 2);
  const auto byteAt = [&](std::size_t i) {
    return i < file->size() ? static_cast<std::uint8_t>((*file)[i]) : 0;
  };
  port_.PortBase = byteAt(0) * 256 + byteAt(1);
  if (port_.PortBase != 0) return;
  port_.PortBase = IicPort::kDefaultPortBase;
  static_cast<void>(Write());  // told when the operator changes it
}

Status PortAddressFile::Write() const {
  const std::array bytes{static_cast<std::uint8_t>(port_.PortBase / 256),
                         static_cast<std::uint8_t>(port_.PortBase % 256)};
  return WriteAtStart(path_, bytes);
}

Status PortAddressFile::SavePortAddress() {
  Status written = Write();
  if (written.Ok()) return written;
  const bool told = std::exchange(toldUnsaved_, true);
  return Status::Failed(told ? std::string() : Unsaved(path_, written.Reason()));
}
