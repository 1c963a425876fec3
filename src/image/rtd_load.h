// The load command of the RTD2120 writer window.
#pragma once

#include <string>

#include "image/code_buffers.h"
#include "image/readers.h"

/// The row of boxes that describes the image in one bank buffer.
struct RtdBankRow {
  std::string file;            // full file name
  std::string maximumAddress;  // decimal
  std::string checksum;        // hexadecimal
};

class RtdLoadView : public FileView {
 public:
  /// `bank`: 1 or 2.
  virtual void ShowBankRow(int bank, const RtdBankRow& row) = 0;
};

/// Asks for one file and loads it into bank buffer 1 for `ucBank` 0, into bank buffer 2 for any
/// other value; cells above the image become 0xFF. A refused file or a cancelled dialog changes
/// nothing.
void Load_RTD2120_NormalFile(int ucBank, tongxun::CodeBuffers& buffers, RtdLoadView& view);
