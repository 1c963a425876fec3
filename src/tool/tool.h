// The whole state of the tool, built once by main() or anew by each test. Every module receives by
// reference only what it needs.
#pragma once

#include <string>
#include <utility>

#include "bus/bus_timing.h"
#include "bus/i2c_master.h"
#include "bus/iic_port.h"
#include "bus/isp_boards.h"
#include "bus/port_address_file.h"
#include "platform/directories.h"
#include "platform/port_io.h"
#include "platform/problem.h"
#include "platform/tick_counter.h"
#include "rtd2120/rtd_images.h"
#include "rtd2120/rtd_link.h"
#include "rtd2120/rtd_operations.h"
#include "rtd2120/rtd_writer.h"
#include "run_log/run_log.h"
#include "run_log/run_report.h"
#include "text/hex_text.h"
#include "vsk/isp_frames.h"
#include "vsk/isp_operations.h"
#include "vsk/vsk_images.h"
#include "vsk/vsk_writer.h"

/// Large (half a megabyte of code buffers): keep it off the stack.
struct Tool {
  /// `report`: told what keeps the bus from being used. `program`: who runs, for the log of runs.
  Tool(PortIo& io, TickCounter& ticks, Directories where, Problem report,
       const std::string& program = "isp-writer")
      : directories(std::move(where)),
        port(io, boards, report),
        portAddress(port, directories.settingsFolder),
        timing(ticks),
        master(port, timing),
        runReport(ticks),
        frames(master, timing),
        isp(frames, timing, vskImages, runReport),
        vskWriter(port, isp, vskImages, runReport),
        rtdLink(port, timing),
        rtdOperations(rtdLink, ticks, rtdImages),
        rtdWriter(port, rtdLink, rtdOperations, timing, rtdImages, runReport),
        runLog(
            directories.stateFolder,
            [this, program] {
              return RunLog::Way{HexText(port.PortBase), boards.InUse().name, program};
            },
            std::move(report)) {
    runReport.Ended = [this](const RunLine& line) { runLog.Append(line); };
  }
  /// The target is left with both lines released, before the port itself is given back.
  ~Tool() { port.ReleaseLines(); }
  Tool(const Tool&) = delete;
  Tool& operator=(const Tool&) = delete;

  /// What every start reads: the port's address, the board table and the board in use.
  void LoadConfiguration(const IspBoards::Turn& turn) {
    const auto initial = directories.programFolder / "Initial";
    portAddress.LoadPortAddress();
    port.InitPortShadows();
    boards.LoadPortConfig(initial / "InitPort.csv", turn);
    boards.LoadCurrentBoard(initial / "CurrIspBoard.csv", turn);
  }

  const Directories directories;
  IspBoards boards;
  IicPort port;
  PortAddressFile portAddress;
  tongxun::BusTiming timing;
  tongxun::I2cMaster master;

  RunReport runReport;

  tongxun::VskImages vskImages;
  tongxun::IspFrames frames;
  IspOperations isp;
  VskWriter vskWriter;

  tongxun2120::RtdImages rtdImages;
  tongxun2120::RtdLink rtdLink;
  tongxun2120::RtdOperations rtdOperations;
  tongxun2120::RtdWriter rtdWriter;

  RunLog runLog;
};
