// "Initial/security.cod".
#include <array>
#include <string>

#include "fuzz.h"
#include "vsk/entry_parameters.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile file("security.cod");
  const std::string bytes = TextOf(data, size);
  file.Write(bytes);
  std::array<std::int16_t, 11> params;
  params.fill(0x1A5);
  std::array<std::int16_t, 11> expected = params;
  fileop::ReadSecurityFile(file.Path(), params);

  for (std::size_t i = 0; i < expected.size() && i <= bytes.size(); ++i) {
    expected[i] = i < bytes.size() ? static_cast<std::uint8_t>(bytes[i]) : 0;
  }
  Require(params == expected, "the file's bytes, then one 0, then what stood there");
  Require(file.Read() == bytes, "the file is only read");
  return 0;
}
