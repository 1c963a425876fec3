#include "bus/recording_port.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <utility>

#include "platform/files.h"

namespace {

/// The registers in their order. Their bits are variables of their own, under the names D0 to D7
/// and so on: not every program reads bytes.
constexpr std::array kRegisterLetters{std::pair{'D', "data"}, std::pair{'S', "status"},
                                      std::pair{'C', "control"}};

std::string Declarations() {
  std::string text;
  for (const auto& [letter, name] : kRegisterLetters) {
    for (char bit = '0'; bit < '8'; ++bit) {
      text += std::string("$var wire 1 ") + letter + bit + ' ' + name + bit + " $end\n";
    }
  }
  return text;
}

}  // namespace

std::uint64_t RecordingPort::SteadyTime() {
  const auto since = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint64_t>(
      std::chrono::duration_cast<std::chrono::nanoseconds>(since).count());
}

RecordingPort::RecordingPort(PortIo& port, const std::filesystem::path& file, Problem report,
                             Clock now_ns, std::uint64_t mostAccesses)
    : port_(port),
      name_(file),
      report_(std::move(report)),
      now_ns_(std::move(now_ns)),
      accessesLeft_(mostAccesses),
      start_ns_(now_ns_()) {
  errno = 0;
  file_.open(file, std::ios::binary);
  vcd_.emplace(file_, "1ns", Declarations());
  file_.flush();
  if (!file_) End();
}

RecordingPort::~RecordingPort() {
  if (vcd_) End();
}

void RecordingPort::UsePort(const PortUse& use) {
  base_ = use.base;
  port_.UsePort(use);
}

void RecordingPort::DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) {
  port_.DlPortWritePortUchar(port, value);
  Note(port, value);
}

std::optional<std::uint8_t> RecordingPort::DlPortReadPortUchar(std::uint32_t port) {
  const auto value = port_.DlPortReadPortUchar(port);
  Note(port, value);
  return value;
}

/// Times of accesses are at least 2 ns apart: the line changes of one may take two of them.
void RecordingPort::Note(std::uint32_t port, std::optional<std::uint8_t> value) {
  const std::uint32_t which = port - base_;
  if (!vcd_ || which >= kRegisterLetters.size()) return;
  const std::uint64_t now_ns = std::max(now_ns_() - start_ns_, time_ns_ + 2);
  const IspBoard* board = boards_ == nullptr ? nullptr : &boards_->InUse();
  const auto role = static_cast<PortRegister>(which);
  if (role == PortRegister::Status && value && board != nullptr) {
    sda_ = !board->SdaIn.Level(*value);
  }
  EndClockRise();
  time_ns_ = now_ns;
  WriteRegister(which, value);
  if (value && board != nullptr) NoteLines(role, *value, *board);
  if (--accessesLeft_ == 0) file_ << "$comment The recording has reached its bound. $end\n";
  if (accessesLeft_ == 0 || !file_) End();
}

void RecordingPort::WriteRegister(std::size_t which, std::optional<std::uint8_t> value) {
  vcd_->At(time_ns_);
  for (std::size_t bit = 0; bit < 8; ++bit) {
    const char level = !value ? 'x' : (*value >> bit & 1) != 0 ? '1' : '0';
    if (std::exchange(levels_[which][bit], level) == level) continue;
    file_ << level << kRegisterLetters[which].first << bit << '\n';
  }
}

void RecordingPort::NoteLines(PortRegister which, std::uint8_t value, const IspBoard& board) {
  const bool wasHigh = scl_;
  if (which == PortRegister::Data) {
    drivenSda_ = sda_ = board.SdaOut.Level(value);
  } else if (which == PortRegister::Control) {
    scl_ = board.SclOut.Level(value);
    clockRises_ = scl_ && !wasHigh;
    if (clockRises_) return;
  }
  vcd_->Levels(time_ns_, sda_, scl_);
  if (!wasHigh || scl_) return;
  sda_ = drivenSda_;  // what the target does until the next sample is not known
  vcd_->Levels(time_ns_ + 1, sda_, scl_);
}

void RecordingPort::EndClockRise() {
  if (!std::exchange(clockRises_, false)) return;
  vcd_->Levels(time_ns_, sda_, false);
  vcd_->Levels(time_ns_ + 1, sda_, true);
}

void RecordingPort::End() {
  EndClockRise();
  vcd_.reset();
  const bool written = file_.flush().good();
  const std::string why = written ? std::string() : WhyBad(file_);
  file_.close();
  if (written) return;
  report_("The recording of the port cannot be written: " + PathText(name_) + ": " + why);
}
