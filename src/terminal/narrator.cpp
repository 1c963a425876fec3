#include "terminal/narrator.h"

#include <numeric>

namespace terminal {
namespace {

constexpr std::size_t kBarWidth = 20;
constexpr const char* kBeginLine = "\r\x1b[?7l";    // cut at the terminal's edge, not wrapped
constexpr const char* kEndLine = "\x1b[K\x1b[?7h";  // clears the rest

std::string TwoDigits(std::int64_t number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

}  // namespace

void Narrator::Plan(std::string title, std::vector<std::size_t> parts) {
  title_ = std::move(title);
  parts_ = std::move(parts);
  part_ = 0;
  percent_ = 0;
  begun_ = clock_.FineTime();
}

void Narrator::NextPart() {
  if (part_ + 1 < parts_.size()) ++part_;
  percent_ = 0;
}

void Narrator::Finish() {
  if (!parts_.empty()) part_ = parts_.size() - 1;
  if (barStands_) Percent(100);
  EndBar();
}

void Narrator::Percent(int percent) {
  if (percent < percent_) NextPart();
  const bool changed = percent != percent_;
  percent_ = percent;
  if (changed) DrawBar();
}

void Narrator::Step(std::string_view text) {
  if (quiet_ || text.empty() || text == step_) return;
  step_ = text;
  if (isTerminal_) return DrawBar();
  err_ << text << "\n" << std::flush;
}

void Narrator::Say(std::string_view text) {
  EndBar();
  err_ << text << "\n" << std::flush;
}

int Narrator::Total() const {
  const auto sum = [](auto begin, auto end) { return std::accumulate(begin, end, 0.0); };
  const auto now = parts_.begin() + static_cast<std::ptrdiff_t>(part_);
  const double all = sum(parts_.begin(), parts_.end());
  if (all == 0) return 0;
  const double part = static_cast<double>(*now) * percent_ / 100;
  return static_cast<int>(100 * (sum(parts_.begin(), now) + part) / all);
}

void Narrator::DrawBar() {
  if (quiet_ || !isTerminal_) return;
  const int total = Total();
  const std::size_t filled = kBarWidth * static_cast<std::size_t>(total) / 100;
  err_ << kBeginLine << title_;
  if (!parts_.empty()) {
    err_ << " [" << std::string(filled, '#') << std::string(kBarWidth - filled, '.') << "] "
         << total << " %";
  }
  if (total > 0) {
    using std::chrono::seconds;
    const auto left =
        std::chrono::round<seconds>((clock_.FineTime() - begun_) * (100 - total) / total);
    err_ << "  " << left.count() / 60 << ":" << TwoDigits(left.count() % 60) << " left";
  }
  if (!step_.empty()) err_ << "  " << step_;
  err_ << kEndLine << std::flush;
  barStands_ = true;
}

void Narrator::EndBar() {
  if (barStands_) err_ << "\n" << std::flush;
  barStands_ = false;
}

}  // namespace terminal
