// What is said on the standard error while a job runs: on a terminal one line that is written anew,
// with a bar, percent and the time that is left; elsewhere one line a step.
#pragma once

#include <chrono>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/tick_counter.h"

namespace terminal {

class Narrator {
 public:
  /// `quiet`: no steps and no bar. `clock`: its `FineTime` gives the time that is left.
  Narrator(std::ostream& err, bool isTerminal, bool quiet, TickCounter& clock)
      : err_(err), isTerminal_(isTerminal), quiet_(quiet), clock_(clock) {}
  ~Narrator() { EndBar(); }
  Narrator(const Narrator&) = delete;
  Narrator& operator=(const Narrator&) = delete;

  /// The parts that the bar stands for, each with the bytes that pass in it, and who is at work.
  void Plan(std::string title, std::vector<std::size_t> parts);
  /// How much of the part that goes on is done, 0..100. Less than before: the next part has begun.
  void Percent(int percent);
  void NextPart();
  /// A step has been done.
  void Step(std::string_view text);
  /// What must be read also by whoever wants no progress.
  void Say(std::string_view text);
  /// All parts are done; the bar's line ends.
  void Finish();
  void EndBar();

 private:
  /// Of all parts, in percent.
  int Total() const;
  void DrawBar();

  std::ostream& err_;
  const bool isTerminal_;
  const bool quiet_;
  TickCounter& clock_;
  std::string title_;
  std::vector<std::size_t> parts_;
  std::size_t part_ = 0;
  int percent_ = 0;
  std::chrono::nanoseconds begun_{};
  std::string step_;
  bool barStands_ = false;
};

}  // namespace terminal
