// The log of what was done to chips, for serial work: one line a run in "runs.csv".
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/problem.h"
#include "run_log/run_result.h"

/// What was programmed, read or compared.
struct RunImage {
  std::string file = {};            // UTF-8
  std::size_t size = 0;             // bytes
  int bank = 0;                     // the first that it went into
  std::optional<int> crc = {};      // which the chip's should equal
  std::optional<int> chipCrc = {};  // as the chip reported it; 0 also of a VSK chip that is silent

  bool Verified() const { return crc && crc == chipCrc; }
  bool operator==(const RunImage&) const = default;
};

/// Hexadecimal; those of several images are joined by " + ".
std::string CrcText(const std::vector<RunImage>& images, std::optional<int> RunImage::*crc);

/// One run that has ended. Texts are UTF-8; those that do not apply are empty.
struct RunLine {
  std::string chip = {};
  std::string operation = {};
  std::vector<RunImage> images = {};  // what was programmed; of a VSK chip one for all its banks
  RunResult result = {};
  std::chrono::milliseconds duration{};

  /// The chip's CRC of all that was programmed is the image's.
  bool Verified() const {
    return !images.empty() && std::ranges::all_of(images, &RunImage::Verified);
  }
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
