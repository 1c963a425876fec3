// "chipport.log".
#include <string>

#include "bus/port_address_file.h"
#include "fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile file("chipport.log");
  std::string bytes = TextOf(data, size);
  file.Write(bytes);
  NoPort io;
  const IspBoards boards;
  IicPort port(io, boards, {});
  PortAddressFile(port, file.Folder()).LoadPortAddress();

  const auto byteAt = [&](std::size_t i) { return i < size ? data[i] : 0; };
  int base = 256 * byteAt(0) + byteAt(1);
  if (base == 0) {
    base = 0x378;
    bytes.replace(0, 2, "\x03\x78");
  }
  Require(port.PortBase == base, "the first two bytes, high one first, or 378 for 0");
  Require(file.Read() == bytes, "only an address of 0 is written over, and nothing behind it");
  return 0;
}
