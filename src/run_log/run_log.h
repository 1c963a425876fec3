// The log of what was done to chips, for serial work: one line a run in "runs.csv".
#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>

#include "platform/problem.h"
#include "run_log/run_result.h"

/// One run that has ended. Texts are UTF-8; those that do not apply are empty.
struct RunLine {
  std::string chip = {};
  std::string operation = {};
  std::string file = {};     // of the image that was programmed
  std::size_t size = 0;      // of the image, in bytes
  std::string crc = {};      // which the chip's should equal, hexadecimal
  std::string chipCrc = {};  // as the chip reported it
  RunResult result = {};
  std::chrono::milliseconds duration{};

  bool operator==(const RunLine&) const = default;
};

class RunLog {
 public:
  using Time = std::chrono::system_clock::time_point;
  /// What the chip is reached through: the port's address, hexadecimal, and the board's name; and
  /// the program.
  struct Way {
    std::string port;
    std::string board;
    std::string program;
  };

  /// `folder`: where "runs.csv" stands, made when the first line is written; empty for no log.
  /// `report` is told once when a line cannot be written. `now` gives the time of each line.
  RunLog(const std::filesystem::path& folder, std::function<Way()> way, Problem report,
         std::function<Time()> now = std::chrono::system_clock::now);

  /// Never fails a run: a line that cannot be written is lost, and the log is as it was.
  void Append(const RunLine& line);

  /// A log that has grown to this size, or has another heading than this version's, becomes
  /// "runs.old.csv", in place of the one before it.
  static constexpr std::size_t kLargest = 1 << 20;  // bytes

 private:
  void RollOver() const;
  std::string TextOf(const RunLine& line) const;

  const std::filesystem::path path_;  // empty for no log
  const std::function<Way()> way_;
  const Problem report_;
  const std::function<Time()> now_;
  bool told_ = false;
};
