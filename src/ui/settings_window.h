// The Settings window: the port address and the bus speed.
#pragma once

#include <QSlider>
#include <QWidget>
#include <functional>

#include "bus/bus_timing.h"
#include "bus/iic_port.h"
#include "bus/port_address_file.h"
#include "widgets/closes_once.h"
#include "widgets/controls.h"

class Form2 final : public ClosesOnce<QWidget> {
 public:
  /// Runs a calibration at once when the speed differs from the slider's initial value.
  /// `closed`: the window is closing, by any means.
  Form2(IicPort& port, PortAddressFile& portAddress, tongxun::BusTiming& timing,
        std::function<void()> closed);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void CreateHeading();
  void CreateSpeed();
  void CreateAddress();
  void Connect();

  void Enter_Click();
  void Command1_Click();  // Back
  void HScroll1_Change();
  void HScroll1_Scroll();
  void Text3_KeyUp();  // Enter released

  /// Takes over and saves the address in the text box. False when it is no address.
  bool ApplyPortAddress();
  void ShowPortAddress();
  void ShowSpeedFactor(int speedFactor);

  QWidget* const client_;
  IicPort& port_;
  PortAddressFile& portAddress_;
  tongxun::BusTiming& timing_;

  QPushButton* enterButton_ = nullptr;
  QPushButton* backButton_ = nullptr;
  QLineEdit* speedFactor_ = nullptr;
  QLineEdit* portAddressBox_ = nullptr;
  QSlider* slider_ = nullptr;
  bool enterPressed_ = false;  // in the address box, not yet released
};
