// The parallel port's address in "chipport.log": two bytes, the high one first.
#pragma once

#include <filesystem>

#include "bus/iic_port.h"

class PortAddressFile {
 public:
  /// `folder`: where "chipport.log" stands.
  PortAddressFile(IicPort& port, const std::filesystem::path& folder);

  /// Sets `PortBase`; a missing, unreadable or zero address becomes 0x378 and is written back.
  void LoadPortAddress();
  /// Writes `PortBase`. False when it could not be written; the file is as it was then.
  bool SavePortAddress() const;

  const std::filesystem::path& Path() const { return path_; }

 private:
  IicPort& port_;
  const std::filesystem::path path_;
};
