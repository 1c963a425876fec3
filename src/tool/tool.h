// The whole state of the tool, built once by main() or anew by each test. Every module receives by
// reference only what it needs.
#pragma once

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
#include "text/hex_text.h"
#include "vsk/isp_frames.h"
#include "vsk/isp_operations.h"
#include "vsk/vsk_images.h"
#include "vsk/vsk_writer.h"

/// Large (half a megabyte of code buffers): keep it off the stack.
struct Tool {
  /// `report`: told what keeps the bus from being used.
  Tool(PortIo& io, TickCounter& ticks, Directories where, Problem report)
      : directories(std::move(where)),
        port(io, boards, report),
        portAddress(port, directories.settingsFolder),
        timing(ticks),
        master(port, timing),
        frames(master, timing),
        isp(frames, timing, vskImages),
        vskWriter(port, isp, vskImages),
        rtdLink(port, timing),
        rtdOperations(rtdLink, ticks, rtdImages),
        rtdWriter(port, rtdLink, rtdOperations, timing, rtdImages),
        runLog(
            directories.stateFolder,
            [this] {
              return RunLog::Way{HexText(port.PortBase), boards.InUse().name};
            },
            std::move(report)) {
    const auto append = [this](const RunLine& line) { runLog.Append(line); };
    vskWriter.RunEnded = append;
    rtdWriter.RunEnded = append;
  }
  /// The target is left with both lines released, before the port itself is given back.
  ~Tool() { port.ReleaseLines(); }
  Tool(const Tool&) = delete;
  Tool& operator=(const Tool&) = delete;

  const Directories directories;
  IspBoards boards;
  IicPort port;
  PortAddressFile portAddress;
  tongxun::BusTiming timing;
  tongxun::I2cMaster master;

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
