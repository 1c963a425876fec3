// The tool from a terminal.
#include "terminal/isp_write.h"

#include <exception>
#include <iostream>

#include "terminal/arguments.h"
#include "terminal/exit_status.h"
#include "terminal/interruption.h"

int main(int argc, char** argv) {
  // Without a handler the stack need not be unwound, and the port would not be given back.
  try {
    terminal::PrepareStreams();
    const terminal::Interruption interruption;
    const auto ticks = SystemTickCounter();
    return terminal::IspWrite(
        terminal::Arguments(argc, argv),
        {.out = std::cout,
         .err = std::cerr,
         .errIsTerminal = terminal::ErrIsTerminal(),
         .ticks = *ticks,
         .directories = SystemDirectories("isp-writer", "isp-write"),
         .simulatedStateFolder = SystemDirectories("isp-writer-simulator").stateFolder,
         .signal = [&] { return interruption.Signal(); },
         .recording = terminal::EnvironmentText("ISP_WRITER_RECORD"),
         .version = "isp-write " ISP_WRITER_VERSION
                    ": writes firmware into microcontrollers from a terminal"});
  } catch (const std::exception& failure) {
    std::cerr << "isp-write: " << failure.what() << "\n";
  } catch (...) {
    std::cerr << "isp-write: unknown error\n";
  }
  return terminal::kProgramFailed;
}
