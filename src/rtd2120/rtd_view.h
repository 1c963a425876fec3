// What the RTD2120 loads and operations need of the writer window.
#pragma once

#include <string>
#include <string_view>

#include "image/writer_view.h"
#include "rtd2120/rtd_images.h"

namespace tongxun2120 {

/// The row of boxes that describes the image in one bank buffer.
struct RtdBankRow {
  std::string file;            // full file name
  std::string maximumAddress;  // decimal
  std::string checksum;        // hexadecimal
};

class RtdView : public WriterView {
 public:
  virtual void ShowBankRow(Bank bank, const RtdBankRow& row) = 0;

  /// The whole text of the status box (`WriteStatus`), lines ended by CR LF.
  virtual void SetStatusText(const std::string& text) = 0;
  /// Pure red, or black.
  virtual void SetStatusRed(bool red) = 0;
  /// Redraws the status box at once, before the operation goes on.
  virtual void RefreshStatus() = 0;
};

}  // namespace tongxun2120
