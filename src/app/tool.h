// The whole state of the tool, built once by main() or anew by each test. Every module receives by
// reference only what it needs.
#pragma once

#include "bus/bus_timing.h"
#include "bus/i2c_master.h"
#include "bus/iic_port.h"
#include "bus/port_config.h"
#include "image/code_buffers.h"
#include "platform/directories.h"
#include "platform/port_io.h"
#include "platform/tick_counter.h"
#include "rtd2120/rtd_link.h"
#include "rtd2120/rtd_operations.h"
#include "rtd2120/rtd_writer.h"
#include "vsk/isp_frames.h"
#include "vsk/isp_operations.h"
#include "vsk/vsk_writer.h"

/// Large (half a megabyte of code buffers): keep it off the stack.
struct Tool {
  Tool(PortIo& io, TickCounter& ticks, Directories where)
      : directories(std::move(where)),
        port(io),
        portConfig(port, directories.portAddressFolder),
        timing(ticks),
        master(port, timing),
        frames(master, timing),
        isp(frames, timing, buffers),
        vskWriter(isp, frames, buffers),
        rtdLink(port, timing),
        rtdOperations(rtdLink, ticks, buffers),
        rtdWriter(rtdLink, rtdOperations, timing, buffers) {}
  /// The target is left with both lines released, before the port itself is given back.
  ~Tool() { port.ReleaseLines(); }
  Tool(const Tool&) = delete;
  Tool& operator=(const Tool&) = delete;

  const Directories directories;
  IicPort port;
  PortConfig portConfig;
  tongxun::BusTiming timing;
  tongxun::I2cMaster master;
  tongxun::CodeBuffers buffers;
  tongxun::IspFrames frames;
  IspOperations isp;
  VskWriter vskWriter;
  tongxun2120::RtdLink rtdLink;
  tongxun2120::RtdOperations rtdOperations;
  RtdWriter rtdWriter;
};
