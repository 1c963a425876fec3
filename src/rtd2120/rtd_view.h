// What the RTD2120 loads and operations need of the writer window.
#pragma once

#include <string>

#include "image/readers.h"
#include "rtd2120/rtd_images.h"

namespace tongxun2120 {

class RtdView : public WriterView {
 public:
  /// The row of boxes that describes the image in a bank's buffer. `file`: its full name; the
  /// maximum address is decimal.
  virtual void ShowBankRow(Bank bank, const std::string& file,
                           const loadfile::ImageFacts& facts) = 0;

  /// The whole text of the status box (`WriteStatus`), lines ended by CR LF. `spoken`: what of it a
  /// screen reader should say.
  virtual void SetStatusText(const std::string& text, const std::string& spoken) = 0;
  /// Pure red, or black.
  virtual void SetStatusRed(bool red) = 0;
  /// Redraws the status box at once, before the operation goes on.
  virtual void RefreshStatus() = 0;
};

}  // namespace tongxun2120
