#include "run_log/run_log.h"

#include <ctime>
#include <iomanip>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/files.h"
#include "text/hex_text.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kHeading =
    "time,seconds,chip,operation,file,size,CRC,chip CRC,result,port,board,program\r\n";

constexpr std::string_view kBetweenImages = " + ";

/// 2026-11-22T14:03:05Z
std::string TimeText(RunLog::Time time) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
  std::ostringstream text;
  text << std::put_time(std::gmtime(&seconds), "%Y-%m-%dT%H:%M:%SZ");
  return text.str();
}

/// Seconds with one decimal.
std::string DurationText(std::chrono::milliseconds duration) {
  const auto tenths = (duration.count() + 50) / 100;
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

std::string Field(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + "\"";
}

/// "Write Ok (red): programcode fail"; the reason is left out when the text ends with it.
std::string ResultText(const RunResult& result) {
  if (result.failure.empty()) return result.text;
  const std::string red = result.text + " (red)";
  return result.text.ends_with(result.failure) ? red : red + ": " + result.failure;
}

}  // namespace

std::string CrcText(const std::vector<RunImage>& images, std::optional<int> RunImage::*crc) {
  std::vector<std::string> texts;
  for (const RunImage& image : images) {
    if (image.*crc) texts.push_back(HexText(*(image.*crc)));
  }
  return Joined(texts, kBetweenImages);
}

RunLog::RunLog(const fs::path& folder, std::function<Way()> way, Problem report,
               std::function<Time()> now)
    : path_(folder.empty() ? fs::path() : folder / "runs.csv"),
      way_(std::move(way)),
      report_(std::move(report)),
      now_(std::move(now)) {}

void RunLog::Append(const RunLine& line) {
  if (path_.empty()) return;
  RollOver();
  const Status written = AppendToFile(path_, TextOf(line), std::string(kHeading));
  if (written.Ok() || std::exchange(told_, true) || !report_) return;
  report_("The log of runs cannot be written: " + PathText(path_) + " (" + written.Reason() +
          "). Programming is not affected.");
}

void RunLog::RollOver() const {
  std::error_code error;
  const bool full = fs::file_size(path_, error) >= kLargest && !error;
  const std::string heading = *ReadFile(path_, kHeading.size());
  if (!full && (heading.empty() || heading == kHeading)) return;
  fs::rename(path_, path_.parent_path() / "runs.old.csv", error);
}

std::string RunLog::TextOf(const RunLine& line) const {
  const Way way = way_();
  std::vector<std::string> files;
  std::size_t size = 0;
  for (const RunImage& image : line.images) {
    if (!image.file.empty()) files.push_back(image.file);
    size += image.size;
  }
  std::string text = TimeText(now_()) + "," + DurationText(line.duration);
  for (const std::string& field :
       {line.chip, line.operation, Joined(files, kBetweenImages),
        files.empty() ? "" : std::to_string(size), CrcText(line.images, &RunImage::crc),
        CrcText(line.images, &RunImage::chipCrc), ResultText(line.result), way.port, way.board,
        way.program}) {
    text += "," + Field(field);
  }
  return text + "\r\n";
}
