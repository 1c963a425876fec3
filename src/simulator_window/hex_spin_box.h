// A number box for flash addresses: four hexadecimal digits in upper case.
#pragma once

#include <QSpinBox>

namespace simulator {

class HexSpinBox final : public QSpinBox {
 public:
  HexSpinBox() {
    setDisplayIntegerBase(16);
    setLocale(QLocale::c());
  }

 protected:
  QString textFromValue(int value) const override {
    return QStringLiteral("%1").arg(value, 4, 16, QLatin1Char('0')).toUpper();
  }
};

}  // namespace simulator
