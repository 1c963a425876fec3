// A port that records every access and serves the status bytes it was given.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <utility>

#include "bus/bus_timing.h"
#include "bus/iic_port.h"
#include "bus/isp_boards.h"
#include "platform/port_io.h"
#include "support/fake_ticks.h"

/// The board that `LineTrace` reads: SDA out data bit 0, SCL out control bit 0, SDA in status bit
/// 6, all direct.
inline IspBoard TraceBoard() {
  IspBoard board;
  board.SdaOut = {.address = 0, .polarity = true, .mask = 0x01};
  board.SclOut = {.address = 0, .polarity = true, .mask = 0x01};
  board.SdaIn = {.address = 0, .polarity = true, .mask = 0x40};
  return board;
}

/// Writes what happens on the lines as words: "D1" and "D0" for SDA, "C1" and "C0" for SCL, "?" for
/// a sample of SDA, and between them ".n" for n counting steps of delay.
class LineTrace final : public PortIo {
 public:
  void Watch(const tongxun::BusTiming& timing) { timing_ = &timing; }
  /// What the samples will see, in order; high (released) when used up.
  std::deque<bool> sdaLow;

  void DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) override {
    const char* line = port == IicPort::kDefaultPortBase ? "D" : "C";
    Word(line + std::to_string(value & 1));
  }
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t) override {
    Word("?");
    const bool low = !sdaLow.empty() && sdaLow.front();
    if (!sdaLow.empty()) sdaLow.pop_front();
    return low ? 0x40 : 0x00;
  }

  /// The words since the last call.
  std::string Take() {
    Delay();
    return std::exchange(text_, {});
  }

 private:
  void Delay() {
    if (timing_ == nullptr) return;
    if (timing_->Steps != steps_) Append("." + std::to_string(timing_->Steps - steps_));
    steps_ = timing_->Steps;
  }
  void Append(const std::string& word) { text_ += (text_.empty() ? "" : " ") + word; }
  void Word(const std::string& word) {
    Delay();
    Append(word);
  }

  const tongxun::BusTiming* timing_ = nullptr;
  std::int64_t steps_ = 0;
  std::string text_;
};

/// The line driver on such a port, with the trace's board in use. One bit delay is 1 step, one byte
/// delay 11 steps.
struct TracedBus {
  FakeTicks ticks;
  LineTrace lines;
  IspBoards boards;
  IicPort port{lines, boards, {}};
  tongxun::BusTiming timing{ticks};

  TracedBus() {
    boards.BoardTable[0] = TraceBoard();
    port.InitPortShadows();
    timing.BitDelayCount = 2;
    timing.ByteDelayCount = 12;
    lines.Watch(timing);
  }
};
