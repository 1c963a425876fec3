// isp-write up to its first access to the port, of which it tells by a byte on the standard output.
#include <unistd.h>

#include <iostream>

#include "startup/hasty_ticks.h"
#include "terminal/interruption.h"
#include "terminal/isp_write.h"

namespace {

class FirstAccess final : public PortIo {
 public:
  void DlPortWritePortUchar(std::uint32_t, std::uint8_t) override { Tell(); }
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t) override { Tell(); }

 private:
  [[noreturn]] static void Tell() {
    const bool told = write(STDOUT_FILENO, "!", 1) == 1;
    _exit(told ? 0 : 1);
  }
};

}  // namespace

int main() {
  const terminal::Interruption interruption;
  HastyTicks ticks;
  return terminal::IspWrite(
      {"program", "vsk830", SAMPLES "/vsk830/thermostat.hex"},
      {.out = std::cout,
       .err = std::cerr,
       .ticks = ticks,
       .directories = SystemDirectories("isp-writer"),
       .simulatedStateFolder = {},
       .openPort = [](const auto&, const Problem&) { return std::make_unique<FirstAccess>(); }});
}
