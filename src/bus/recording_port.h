// Records every access to the parallel port in a value change dump, for support.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>

#include "bus/isp_boards.h"
#include "bus/vcd_writer.h"
#include "platform/port_io.h"

/// Passes all accesses on to another port. The dump has the time of every access, the bits of the
/// three registers, and SDA and SCL as the wiring of the board in use carries them. SDA is what the
/// tool drives until it samples the line, and from a low sample on low, until SCL falls. A sample
/// counts from just before its clock, as the target had set it by then: a decoder sees no START in
/// it.
class RecordingPort final : public PortIo {
 public:
  /// A bound for the file too: about 80 MB. Programming 64 KiB takes 2.4 million accesses.
  static constexpr std::uint64_t kMostAccesses = 3'000'000;

  /// Nanoseconds since some fixed moment.
  using Clock = std::function<std::uint64_t()>;

  /// `report` is told once when `file` cannot be written; the accesses go on, unrecorded. After
  /// `mostAccesses` the recording ends, and says so in a last comment.
  RecordingPort(PortIo& port, const std::filesystem::path& file, Problem report,
                Clock now_ns = SteadyTime, std::uint64_t mostAccesses = kMostAccesses);
  ~RecordingPort() override;
  RecordingPort(const RecordingPort&) = delete;
  RecordingPort& operator=(const RecordingPort&) = delete;

  /// Where the lines are from now on; they rest high before.
  void FollowBoards(const IspBoards& boards) { boards_ = &boards; }

  void UsePort(const PortUse& use) override;
  bool StillThere() override { return port_.StillThere(); }
  void DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) override;
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t port) override;

 private:
  static std::uint64_t SteadyTime();

  void Note(std::uint32_t port, std::optional<std::uint8_t> value);
  void WriteRegister(std::size_t which, std::optional<std::uint8_t> value);
  void NoteLines(PortRegister which, std::uint8_t value, const IspBoard& board);
  void EndClockRise();
  void End();

  PortIo& port_;
  const std::filesystem::path name_;
  const Problem report_;
  const Clock now_ns_;
  std::uint64_t accessesLeft_;
  std::ofstream file_;
  std::optional<VcdWriter> vcd_;  // nothing: not recording
  const IspBoards* boards_ = nullptr;

  std::uint32_t base_ = 0;
  const std::uint64_t start_ns_;
  std::uint64_t time_ns_ = 0;                    // of the last access, since `start_ns_`
  std::array<std::array<char, 8>, 3> levels_{};  // of the registers' bits, as written last
  bool drivenSda_ = true;
  bool sda_ = true;
  bool scl_ = true;
  bool clockRises_ = false;  // not written yet: SDA is set first when the next access samples it
};
