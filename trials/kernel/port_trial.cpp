// The tool's own port code on a real kernel: takes the port at 0x378 as the tool does, does one
// small thing, and ends in one of the tool's ways. What the operator would be told goes to standard
// output.
//
//   port_trial byte            START, the byte A5, STOP, normal end
//   port_trial exit            the same, then EXIT: the event loop is left
//   port_trial hold SECONDS    the same, then waits in the event loop for a signal or the time's
//   end port_trial writes SECONDS  writes SDA ten times a second, and says how many writes came
//   back port_trial claim SECONDS   what another program does: a plain claim, kept for the time
//   port_trial bound           a plain claim that is held, and then the tool's bounded claim
//   port_trial mark NUMBER     EE DD NUMBER on the data lines, to be found in a trace; root only
#include <fcntl.h>
#include <linux/ppdev.h>
#include <sys/io.h>
#include <sys/ioctl.h>
#include <sys/time.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <thread>

#include "app/quit_signals.h"
#include "bus/i2c_master.h"
#include "bus/iic_port.h"
#include "platform/linux/port_system.h"

namespace {

using Clock = std::chrono::steady_clock;

void Say(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

/// SDA out on data bit 7, SCL out on control bit 1, SDA in on status bit 7; all direct.
struct Bus {
  IspBoards boards;
  std::unique_ptr<PortIo> io =
      SystemParallelPort([](const std::string& told) { Say("told: " + told); });
  IicPort port{*io, boards, Say};
  std::unique_ptr<TickCounter> ticks = SystemTickCounter();
  tongxun::BusTiming timing{*ticks};
  tongxun::I2cMaster master{port, timing};

  Bus() {
    boards.BoardTable[0].SdaOut = {.address = 0, .polarity = true, .mask = 0x80};
    boards.BoardTable[0].SclOut = {.address = 0, .polarity = true, .mask = 0x02};
    boards.BoardTable[0].SdaIn = {.address = 0, .polarity = true, .mask = 0x80};
    port.InitPortShadows();
  }
  ~Bus() { port.ReleaseLines(); }
  Bus(const Bus&) = delete;
  Bus& operator=(const Bus&) = delete;

  void SendByte() {
    master.I2cStart();
    master.I2cWriteByte(0xA5);
    master.I2cStop();
  }
};

int RunLoop(int argc, char** argv, int seconds) {
  QCoreApplication application(argc, argv);
  const QuitSignals quitSignals;
  Bus bus;
  bus.SendByte();
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
  if (what == "byte") {
    Bus().SendByte();
    return 0;
  }
  if (what == "exit") return RunLoop(argc, argv, 0);
  if (what == "hold") return RunLoop(argc, argv, number);
  if (what == "writes") return Writes(number);
  if (what == "claim") return ClaimFor(number);
  if (what == "bound") return Bound();
  if (what == "mark") return Mark(number);
  return 2;
}
