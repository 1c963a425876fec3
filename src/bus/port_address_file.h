// The parallel port's address in "chipport.log": two bytes, the high one first.
#pragma once

#include <filesystem>
#include <string>

#include "bus/iic_port.h"

class PortAddressFile {
 public:
  /// `folder`: where "chipport.log" stands.
  PortAddressFile(IicPort& port, const std::filesystem::path& folder);

  /// Sets `PortBase`; a missing, unreadable or zero address becomes 0x378 and is written back.
  void LoadPortAddress();
  /// Writes `PortBase`. False when it could not be written; the file is as it was then.
  bool SavePortAddress();

  /// What to tell the operator of an address that could not be written: a sentence the first time
  /// in a run, then nothing.
  std::string UnsavedNotice();

 private:
  IicPort& port_;
  const std::filesystem::path path_;
  std::string unsaved_;  // why the last save failed; empty when it did not
  bool toldUnsaved_ = false;
};
