#include "rtd2120/rtd_log.h"

#include "text/hex_text.h"

namespace tongxun2120 {
namespace {

constexpr const char* kLineEnd = "\r\n";

}  // namespace

RtdLog::RtdLog(RtdView& view) : view_(view) {
  view_.SetStatusRed(false);
  view_.SetStatusText("", "");
}

std::string RtdLog::LastLine() const {
  const std::string_view lines = Trim(text_, " \r\n");
  const std::size_t end = lines.rfind('\n');
  return std::string(lines.substr(end == std::string_view::npos ? 0 : end + 1));
}

void RtdLog::Show(const std::string& text) {
  text_ = text;
  view_.SetStatusText(text_, errors_ + LastLine());
  view_.RefreshStatus();
}

void RtdLog::AppendLine(std::string_view message) { Show(text_ + std::string(message) + kLineEnd); }

void RtdLog::AppendRedLine(std::string_view message) { AppendRed(message, kLineEnd); }

void RtdLog::AppendLinkError(std::string_view place) {
  if (failure_.empty()) place_ = place;
  AppendRed(kLinkError, "");
}

void RtdLog::AppendRed(std::string_view message, const char* lineEnd) {
  if (failure_.empty()) failure_ = message;
  text_ += std::string(message) + lineEnd;
  view_.SetStatusText(text_, errors_ + LastLine());
  errors_ += LastLine() + "; ";
  view_.SetStatusRed(true);
  view_.RefreshStatus();
}

RunResult RtdLog::Result() const {
  std::string line = text_;
  if (line.ends_with(kLineEnd)) line.resize(line.size() - 2);
  for (std::size_t at = 0; (at = line.find(kLineEnd, at)) != std::string::npos;) {
    line.replace(at, 2, "; ");
  }
  return {.text = line, .failure = failure_, .place = place_, .silent = silent_};
}

}  // namespace tongxun2120
