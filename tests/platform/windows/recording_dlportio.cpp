// A substitute for the port driver library that records its calls and serves one byte. Which of
// these functions a library exports is said in its .def file. When the environment's
// DLPORTIO_RECORD names a file, each call is also appended to it at once, as a line of its own.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

namespace {

std::string record;
std::uint8_t served = 0;

void Record(const char* format, unsigned port, unsigned value) {
  char text[32];
  std::snprintf(text, sizeof text, format, port, value);
  record += std::string(text) + " ";
  static const char* const name = std::getenv("DLPORTIO_RECORD");
  static std::FILE* const file = name == nullptr ? nullptr : std::fopen(name, "ab");
  if (file == nullptr) return;
  std::fprintf(file, "%s\n", text);
  std::fflush(file);
}

}  // namespace

extern "C" {

void __stdcall DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) {
  Record("%X=%02X", port, value);
}

std::uint8_t __stdcall DlPortReadPortUchar(std::uint32_t port) {
  Record("%X?%02X", port, served);
  return served;
}

/// The calls since the last one: "port=value " for a write, "port?value " for a read, hexadecimal.
/// Valid until the next call.
const char* __stdcall TakeRecord() {
  static std::string taken;
  taken = std::exchange(record, {});
  return taken.c_str();
}

/// What reads return from now on; 0 at first.
void __stdcall Serve(std::uint8_t value) { served = value; }
}
