// The three files that configure the bus: the board table, the current board, and the port address
// in "chipport.log". Loaders report nothing: an error ends the load and keeps what was read so far.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>

#include "bus/iic_port.h"

class PortConfig {
 public:
  /// Gives the user interface one turn of its message loop.
  using Turn = std::function<void()>;

  /// `portAddressFolder`: where "chipport.log" stands.
  PortConfig(IicPort& port, const std::filesystem::path& portAddressFolder);

  std::int16_t BoardCount = 0;  // rows announced by the last block of the board table

  /// Fills the board table from "Initial/InitPort.csv". A mask outside 1..255 is stored as 0.
  void LoadPortConfig(const std::filesystem::path& path, const Turn& turn);
  /// Sets `CurrentBoard` from "Initial/CurrIspBoard.csv"; the last field wins, and a value outside
  /// 0..20 is ignored.
  void LoadCurrentBoard(const std::filesystem::path& path, const Turn& turn);

  /// Sets `PortBase` from "chipport.log"; a missing, unreadable or zero address becomes 0x378 and
  /// is written back.
  void LoadPortAddress();
  /// Writes `PortBase` to "chipport.log"; an error leaves the file as it was.
  void SavePortAddress() const;

 private:
  IicPort& port_;
  std::filesystem::path addressFile_;
};
