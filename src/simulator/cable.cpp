#include "simulator/cable.h"

namespace simulator {

void Cable::DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) {
  ++accesses_;
  switch (static_cast<PortRegister>(port - portBase_)) {
    case PortRegister::Data:
      masterSda_ = wiring_.SdaOut.Level(value);
      break;
    case PortRegister::Control:
      masterScl_ = wiring_.SclOut.Level(value);
      break;
    default:
      return;
  }
  wire_.OnLevels(Sda(), masterScl_);
  if (listener_ != nullptr) listener_->Levels(accesses_, Sda(), masterScl_);
}

std::optional<std::uint8_t> Cable::DlPortReadPortUchar(std::uint32_t port) {
  ++accesses_;
  // Another port's lines are idle. A direct input shows a low SDA as a set bit. The other status
  // bits float high.
  const LineSpec& line = wiring_.SdaIn;
  const bool own = static_cast<PortRegister>(port - portBase_) == PortRegister::Status;
  const bool sda = !own || Sda();
  const bool setBit = sda != line.polarity;
  return static_cast<std::uint8_t>(setBit ? 0xFF : 0xFF & ~line.mask);
}

}  // namespace simulator
