// Hexadecimal numbers of the window, and a number box for flash addresses: four digits.
#pragma once

#include <QSpinBox>

namespace simulator {

/// Upper case, with leading zeros up to `digits`.
inline QString PaddedHex(int value, int digits) {
  return QStringLiteral("%1").arg(value, digits, 16, QLatin1Char('0')).toUpper();
}

class HexSpinBox final : public QSpinBox {
 public:
  HexSpinBox() {
    setDisplayIntegerBase(16);
    setLocale(QLocale::c());
  }

 protected:
  QString textFromValue(int value) const override { return PaddedHex(value, 4); }
};

}  // namespace simulator
