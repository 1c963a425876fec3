// The parallel port's address in "chipport.log": two bytes, the high one first.
#pragma once

#include <filesystem>

#include "bus/iic_port.h"
#include "platform/status.h"

class PortAddressFile {
 public:
  /// `folder`: where "chipport.log" stands.
  PortAddressFile(IicPort& port, const std::filesystem::path& folder);

  /// Sets `PortBase`; a missing, unreadable or zero address becomes 0x378 and is written back.
  void LoadPortAddress();
  /// Writes `PortBase`. A failure leaves the file as it was; its reason is a sentence for the
  /// operator, the first time in a run.
  Status SavePortAddress();

 private:
  Status Write() const;

  IicPort& port_;
  const std::filesystem::path path_;
  bool toldUnsaved_ = false;
};
