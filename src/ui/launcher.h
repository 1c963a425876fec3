// The first window. Starts the program up, opens the writers one at a time, ends the program.
#pragma once

#include <QWidget>
#include <memory>

#include "bus/bus_timing.h"
#include "bus/iic_port.h"
#include "bus/port_config.h"
#include "image/code_buffers.h"
#include "platform/directories.h"
#include "rtd2120/rtd_writer.h"
#include "ui/rtd_writer_window.h"
#include "ui/security_window.h"
#include "ui/settings_window.h"
#include "ui/vsk_writer_window.h"
#include "vsk/isp_frames.h"
#include "vsk/isp_operations.h"
#include "vsk/vsk_writer.h"

/// Which writer window is open.
enum class OpenWriter { Vsk = 0, Rtd2120 = 2, None = 3 };

/// Owns all other windows.
class Main final : public QWidget {
 public:
  /// Runs the whole start-up, which holds the thread for about a second; shows no launcher yet.
  Main(const Directories& directories, IicPort& port, PortConfig& portConfig,
       tongxun::BusTiming& timing, tongxun::CodeBuffers& buffers, tongxun::IspFrames& frames,
       IspOperations& isp, VskWriter& vskWriter, RtdWriter& rtdWriter);
  ~Main() override;

  OpenWriter WriterState = OpenWriter::None;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void CreateButtons();
  void StartUp();
  void Init830And630();
  void InitRTD2120();
  void check_file();
  void CreateForm1();
  void OpenVskWriter(VskChip chip);
  void OpenRtdWriter();
  void ShowSettings();

  const Directories& directories_;
  IicPort& port_;
  PortConfig& portConfig_;
  tongxun::BusTiming& timing_;
  tongxun::CodeBuffers& buffers_;
  tongxun::IspFrames& frames_;
  IspOperations& isp_;
  VskWriter& vskWriter_;
  RtdWriter& rtdWriter_;

  std::unique_ptr<Form1> form1_;  // hidden from start-up until the launcher shows it
  std::unique_ptr<Form2> form2_;
  std::unique_ptr<RTD2120Write> rtdWrite_;
  std::unique_ptr<Form3> form3_;
};
