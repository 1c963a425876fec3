// The tool's own port code on a real kernel: takes a port as the tool does, does one small thing,
// and ends in one of the tool's ways. It prints what the operator would be told. The port is the
// one at 0x378; or, at the address TRIAL_PORT, one of board 0 and of the files in the folder
// TRIAL_FOLDER.
//
//   byte            START, the byte A5, STOP, normal end
//   exit            the same, then EXIT: the event loop is left
//   hold SECONDS    the same, then waits in the event loop for a signal or the end of the time
//   twice           the byte on a port that is taken, and again after it was given back
//   writes SECONDS  writes SDA ten times a second, and says how many writes came back
//   lost            goes to ISP mode; tries to go on when there is a file /tmp/gone; sends the byte
//                   when there is a file /tmp/back
//   held FILE       the byte, while "pull-down" is written to the file at each sample of SDA
//   ports           lists the ports of GPIO lines, and the machine's GPIO chips
//   claim SECONDS   what another program does: a plain claim, kept for the time
//   bound           a plain claim that is held, and then the tool's bounded claim
//   mark NUMBER     EE DD NUMBER on the data lines, to be found in a trace; root only
#include <fcntl.h>
#include <linux/ppdev.h>
#include <sys/io.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include "app/quit_signals.h"
#include "bus/i2c_master.h"
#include "bus/iic_port.h"
#include "platform/linux/gpio_access.h"
#include "platform/linux/port_system.h"
#include "support/transcript.h"
#include "tool/tool.h"

namespace {

using Clock = std::chrono::steady_clock;

void Say(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

void Tell(const std::string& told) { Say("told: " + told); }

/// SDA out on data bit 7, SCL out on control bit 1, SDA in on status bit 7; all direct.
IspBoard Wiring() {
  IspBoard board;
  board.SdaOut = {.address = 0, .polarity = true, .mask = 0x80};
  board.SclOut = {.address = 0, .polarity = true, .mask = 0x02};
  board.SdaIn = {.address = 0, .polarity = true, .mask = 0x80};
  return board;
}

std::filesystem::path BoardFolder() {
  const char* folder = std::getenv("TRIAL_FOLDER");
  return folder ? folder : "";
}

std::unique_ptr<PortIo> Port() { return SystemParallelPort(BoardFolder(), Tell); }

void UsePort(IicPort& port, IspBoards& boards) {
  if (const char* address = std::getenv("TRIAL_PORT")) {
    port.PortBase = static_cast<std::int32_t>(std::strtol(address, nullptr, 16));
    boards.LoadPortConfig(BoardFolder() / "InitPort.csv", [] {});
  } else {
    boards.BoardTable[0] = Wiring();
  }
  port.InitPortShadows();
}

bool SendByte(tongxun::I2cMaster& master) {
  master.I2cStart();
  const bool acknowledged = master.I2cWriteByte(0xA5);
  master.I2cStop();
  return acknowledged;
}

struct Bus {
  IspBoards boards;
  std::unique_ptr<PortIo> io;
  IicPort port{*io, boards, Say};
  std::unique_ptr<TickCounter> ticks = SystemTickCounter();
  tongxun::BusTiming timing{*ticks};
  tongxun::I2cMaster master{port, timing};

  explicit Bus(std::unique_ptr<PortIo> used = Port()) : io(std::move(used)) {
    UsePort(port, boards);
  }
  ~Bus() { port.ReleaseLines(); }
  Bus(const Bus&) = delete;
  Bus& operator=(const Bus&) = delete;
};

/// A port that is not given back cannot be taken a second time.
int Bytes(int times) {
  for (int i = 0; i < times; ++i) {
    Bus bus;
    SendByte(bus.master);
  }
  Say("sent");
  return 0;
}

void WaitForFile(const char* name) {
  while (!std::filesystem::exists(name)) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
}

/// SDA reads 1 while the port is there, which acknowledges on a direct input. A parallel port that
/// has gone reads 0, which acknowledges after the polarity was turned round.
int Lost() {
  const auto io = Port();
  const auto ticks = SystemTickCounter();
  const auto tool = std::make_unique<Tool>(*io, *ticks, Directories{}, Tell);
  UsePort(tool->port, tool->boards);
  const IspBoard board = tool->boards.InUse();
  tool->boards.BoardTable[0].SdaIn.polarity = true;
  tool->frames.IspParams = {0x94, 2, 0x5A, 0xA5};
  tool->vskWriter.IspOperate = RunChoice::EraseAll;
  Transcript view;
  tool->vskWriter.GoToIspMode(view);
  Say("before: " + view.modeText);
  WaitForFile("/tmp/gone");
  tool->boards.BoardTable[0].SdaIn.polarity = false;
  Say(tool->port.SdaIsLow() ? "its status acknowledges" : "its status does not acknowledge");
  tool->vskWriter.Run(view);
  Say("run: " + view.modeText);
  tool->vskWriter.GoToIspMode(view);
  Say("go to: " + view.modeText);
  WaitForFile("/tmp/back");
  tool->boards.BoardTable[0] = board;
  tool->port.ReopenPort();
  SendByte(tool->master);
  Say("sent");
  return 0;
}

int RunLoop(int argc, char** argv, int seconds) {
  QCoreApplication application(argc, argv);
  const QuitSignals quitSignals;
  Bus bus;
  SendByte(bus.master);
  Say("ready");
  QTimer::singleShot(seconds * 1000, &application, [] { QCoreApplication::exit(); });
  const int result = QCoreApplication::exec();
  Say("ended");
  return result;
}

int Writes(int seconds) {
  Bus bus;
  int written = 0;
  for (const auto end = Clock::now() + std::chrono::seconds(seconds); Clock::now() < end;) {
    bus.port.SetSdaLow();
    ++written;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    if (written == 5) Say("writing");
  }
  Say("written " + std::to_string(written));
  return 0;
}

/// A target that holds SDA low whenever it is sampled: a simulated line is pulled down from
/// outside.
class HeldLow final : public PortIo {
 public:
  explicit HeldLow(const char* pull) : pull_(pull) {}

  void UsePort(const PortUse& use) override { io_->UsePort(use); }
  void DlPortWritePortUchar(std::uint32_t port, std::uint8_t value) override {
    io_->DlPortWritePortUchar(port, value);
  }
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t port) override {
    std::ofstream(pull_) << "pull-down" << std::flush;
    return io_->DlPortReadPortUchar(port);
  }

 private:
  const char* pull_;
  std::unique_ptr<PortIo> io_ = Port();
};

int Held(const char* pull) {
  Bus bus(std::make_unique<HeldLow>(pull));
  Say(SendByte(bus.master) ? "acknowledged" : "not acknowledged");
  return 0;
}

int Ports() {
  const auto system = LinuxPortSystem();
  for (const PortNote& note : GpioPorts(*system, BoardFolder())) {
    if (note.base) std::printf("%X through ", *note.base);
    Say(note.device + (note.problem.empty() ? "" : ": " + note.problem));
  }
  return 0;
}

int OpenPort() {
  const int port = open("/dev/parport0", O_RDWR);
  if (port < 0) std::perror("open");
  return port;
}

int ClaimFor(int seconds) {
  const int port = OpenPort();
  if (ioctl(port, PPCLAIM) != 0) std::perror("PPCLAIM");
  Say("claimed");
  std::this_thread::sleep_for(std::chrono::seconds(seconds));
  return 0;
}

int Bound() {
  const int holder = OpenPort();
  if (ioctl(holder, PPCLAIM) != 0) std::perror("PPCLAIM");
  const auto system = LinuxPortSystem();
  const int ours = system->Open("/dev/parport0");
  const auto begin = Clock::now();
  const int result = system->IoctlWithin(ours, PPCLAIM, 2000);
  const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin);
  const bool inTime = took.count() >= 1900 && took.count() < 4000;
  Say("bounded claim: " + std::string(std::strerror(-result)) +
      (inTime ? ", after about 2 s" : ", after " + std::to_string(took.count()) + " ms"));
  return 0;
}

int Mark(int number) {
  if (ioperm(0x378, 3, 1) != 0) return 1;
  for (const int value : {0xEE, 0xDD, number}) outb(static_cast<unsigned char>(value), 0x378);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string what = argc > 1 ? argv[1] : "";
  const int number = argc > 2 ? std::atoi(argv[2]) : 0;
  if (what == "byte") return Bytes(1);
  if (what == "twice") return Bytes(2);
  if (what == "lost") return Lost();
  if (what == "exit") return RunLoop(argc, argv, 0);
  if (what == "hold") return RunLoop(argc, argv, number);
  if (what == "writes") return Writes(number);
  if (what == "held" && argc > 2) return Held(argv[2]);
  if (what == "ports") return Ports();
  if (what == "claim") return ClaimFor(number);
  if (what == "bound") return Bound();
  if (what == "mark") return Mark(number);
  return 2;
}
