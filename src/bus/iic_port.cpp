#include "bus/iic_port.h"

void IicPort::InitPortShadows() {
  DataShadow = 0x7F;
  ControlShadow = 0;
}

void IicPort::ReleaseLines() {
  if (PortBase != portInUse_) return;
  SetSclHigh();
  SetSdaHigh();
}

void IicPort::AnnouncePort() {
  if (!Board().Complete()) TellMissingWiring();
  portInUse_ = PortBase;
  io_.UsePort({.base = static_cast<std::uint32_t>(PortBase),
               .sampled = static_cast<std::uint8_t>(Board().SdaIn.mask),
               .data = WithLine(DataShadow, Board().SdaOut, true),
               .control = WithLine(ControlShadow, Board().SclOut, true)});
}

std::uint8_t IicPort::WithLine(std::int16_t shadow, const LineSpec& line, bool high) {
  const bool setBit = high == line.polarity;
  return static_cast<std::uint8_t>(setBit ? shadow | line.mask : shadow & (255 - line.mask));
}

void IicPort::Drive(PortRegister which, std::int16_t shadow, const LineSpec& line, bool high) {
  io_.DlPortWritePortUchar(PortOf(which), WithLine(shadow, line, high));
}

bool IicPort::SdaIsLow() {
  const IspBoard& board = Board();
  const auto status = io_.DlPortReadPortUchar(PortOf(PortRegister::Status));
  if (!board.Complete()) TellMissingWiring();
  if (!status || !board.Complete()) return false;
  const bool bitSet = (*status & board.SdaIn.mask) != 0;
  return bitSet == board.SdaIn.polarity;
}

void IicPort::TellMissingWiring() {
  if (std::exchange(boardTold_, true)) return;
  if (report_) report_(boards_.MissingWiring());
}
