// How long a program takes from its start to its window, and how much memory it needs for it.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

/// A program from the start-up folder, with pipes to its standard input and output.
class StartedProgram {
 public:
  explicit StartedProgram(const std::string& name) {
    if (pipe2(input_.data(), O_CLOEXEC) != 0 || pipe2(output_.data(), O_CLOEXEC) != 0) return;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input_[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output_[1], STDOUT_FILENO);
    std::string path = name.starts_with('/') ? name : STARTUP_FOLDER "/" + name;
    std::array<char*, 2> arguments{path.data(), nullptr};
    running_ = posix_spawn(&id_, path.c_str(), &actions, nullptr, arguments.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    close(output_[1]);  // so that the end of the program ends the wait for its byte
    close(input_[0]);
  }
  ~StartedProgram() {
    close(input_[1]);
    close(output_[0]);
    if (running_) waitpid(id_, nullptr, 0);
  }
  StartedProgram(const StartedProgram&) = delete;
  StartedProgram& operator=(const StartedProgram&) = delete;

  /// False when the program ended before it showed its window, or used the port.
  bool WaitUntilShown() {
    char byte = 0;
    return running_ && read(output_[0], &byte, 1) == 1;
  }

  double PeakMemory_MiB() const {
    std::ifstream status("/proc/" + std::to_string(id_) + "/status");
    for (std::string line; std::getline(status, line);) {
      if (line.starts_with("VmHWM:")) return std::stod(line.substr(6)) / 1024;
    }
    return 0;
  }

 private:
  std::array<int, 2> input_{};
  std::array<int, 2> output_{};
  pid_t id_ = 0;
  bool running_ = false;
};

void Start(benchmark::State& state, const std::string& program, const char* platform) {
  setenv("QT_QPA_PLATFORM", platform, 1);
  for (auto _ : state) {
    const auto begin = std::chrono::steady_clock::now();
    StartedProgram started(program);
    const bool shown = started.WaitUntilShown();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    if (!shown) state.SkipWithError("no window was shown");
    state.SetIterationTime(took.count());
    state.counters["peak_MiB"] = started.PeakMemory_MiB();
  }
}

void Register(const std::string& program, const char* platform) {
  const std::string name = "Start/" + program + "/" + platform;
  benchmark::RegisterBenchmark(name.c_str(), Start, program, platform)
      ->Unit(benchmark::kMillisecond)
      ->UseManualTime()
      ->Iterations(1)
      ->Repetitions(41);
}

/// isp-write up to its first access to the port, and a program that does nothing, to its end.
void StartTerminal(benchmark::State& state, const std::string& program) {
  for (auto _ : state) {
    const auto begin = std::chrono::steady_clock::now();
    StartedProgram started(program);
    const bool told = started.WaitUntilShown();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    if (told == (program == "/bin/true")) state.SkipWithError("it did something else");
    state.SetIterationTime(took.count());
  }
}

const bool registered = [] {
  for (const std::string program : {"/bin/true", "terminal_access"}) {
    benchmark::RegisterBenchmark(("StartTerminal/" + program).c_str(), StartTerminal, program)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(41);
  }
  for (const char* platform : {"offscreen", "xcb"}) {
    if (platform == std::string("xcb") && std::getenv("DISPLAY") == nullptr) continue;
    for (const char* program : {"bare_window", "text_window", "tool_launcher"})
      Register(program, platform);
  }
  return true;
}();

}  // namespace
