// A number box for flash addresses: four hexadecimal digits.
#pragma once

#include <QSpinBox>

#include "text/hex_text.h"
#include "widgets/dialogs.h"

namespace simulator {

class HexSpinBox final : public QSpinBox {
 public:
  HexSpinBox() {
    setDisplayIntegerBase(16);
    setLocale(QLocale::c());
  }

 protected:
  QString textFromValue(int value) const override { return TextOf(PaddedHex(value, 4)); }
};

}  // namespace simulator
