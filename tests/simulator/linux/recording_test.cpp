// Recordings of the bus: a logic analyser's own I2C decoder finds in them the frames that passed.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>

#include "bus/recording_port.h"
#include "simulator/bus_log.h"
#include "simulator/simulated_board.h"
#include "support/fake_ticks.h"
#include "support/gpio_rig.h"
#include "support/images.h"
#include "support/rtd_transcript.h"
#include "support/temp_folder.h"
#include "support/transcript.h"
#include "tool/tool.h"

namespace {

using simulator::ConnectedChip;
using testing::HasSubstr;
using testing::Not;

/// The frames that sigrok-cli finds in a recording, in the words of `FrameLog`.
std::vector<std::string> Decoded(const std::filesystem::path& file) {
  const std::string command = "sigrok-cli -I vcd -i '" + file.string() +
                              "' -P i2c:scl=SCL:sda=SDA:address_format=unshifted -A i2c";
  const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), pclose);
  std::vector<std::string> frames;
  std::array<char, 256> buffer{};
  while (std::fgets(buffer.data(), buffer.size(), output.get()) != nullptr) {
    const std::string line = buffer.data();
    const std::string value = line.substr(line.size() - 3, 2);
    if (line == "i2c-1: Start\n") {
      frames.emplace_back("S");
    } else if (line == "i2c-1: Start repeat\n") {
      frames.back() += " Sr";
    } else if (line == "i2c-1: Stop\n") {
      frames.back() += " P";
    } else if (line == "i2c-1: NACK\n") {
      frames.back() += "-";
    } else if (line.find("Data read: ") != std::string::npos) {
      frames.back() += " [" + value + "]";
    } else if (line.find(": ", 7) != std::string::npos) {
      frames.back() += " " + value;
    }
  }
  return frames;
}

/// Writes 300 bytes into each bank of the chip, and reads a page where that can be done.
void Write(Tool& tool, ConnectedChip chip) {
  const auto image = Image(300);
  tongxun::VskImages& images = tool.vskImages;
  for (auto* cells : {&images.CodeBuffer, &images.CodeBank0, &images.CodeBank1}) {
    std::copy(image.begin(), image.end(), cells->begin());
  }
  images.CodeMax = images.CodeBank0Max = images.CodeBank1Max = 299;
  tool.rtdImages.Bank1Loaded = tool.rtdImages.Bank2Loaded = true;
  tool.rtdImages.Bank1Max = tool.rtdImages.Bank2Max = 299;
  if (chip == ConnectedChip::Rtd2120) {
    tool.rtdWriter.BankMode = tongxun2120::RtdBankMode::Both;
    RtdTranscript view;
    tool.rtdWriter.Run(view);
    return;
  }
  tool.isp.ChipSelect = chip == ConnectedChip::Vsk830 ? VskChip::Vsk830 : VskChip::Vsk630;
  tool.frames.IspParams = {0x94, 2, 0x5A, 0xA5};
  Transcript view;
  tool.isp.EnterIspMode(view);
  tool.isp.DoProgram(view);
  tool.isp.EnterIspMode(view);
  tool.isp.ReadChipPage(1, view);
}

/// As a tool that does not look at the acknowledge behind a repeated START records it.
void LeaveOutAcknowledge(std::string& frame) {
  const std::size_t at = frame.find("Sr 95 [");
  if (at != std::string::npos) frame.insert(at + 5, "-");
}

/// A run on a chip, through the cable's parallel port or through the lines of a GPIO chip.
void ExpectRead(ConnectedChip chip, bool gpio) {
  const TempFolder folder;
  const IspBoard wiring = gpio ? PlainWires() : simulator::CableWiring();
  const auto board = std::make_unique<simulator::SimulatedBoard>(wiring);
  board->Connect(chip);
  simulator::FrameLog log;
  board->wire.ListenTo(&log);
  GpioRig lines;
  lines.Wire(*board);
  {
    std::ofstream cableFile(folder / "cable.vcd");
    simulator::VcdRecorder recorder(cableFile);
    board->cable.ListenTo(&recorder);
    std::uint64_t now_ns = 0;
    RecordingPort port(gpio ? *lines.io : board->cable, folder / "port.vcd", {},
                       [&] { return now_ns += 1000; });
    FakeTicks ticks{4};
    const auto tool = std::make_unique<Tool>(port, ticks, Directories{}, Problem{});
    port.FollowBoards(tool->boards);
    tool->boards.BoardTable[0] = wiring;
    tool->port.InitPortShadows();
    if (gpio) tool->port.PortBase = GpioRig::kBase;
    Write(*tool, chip);
  }
  board->cable.ListenTo(nullptr);  // GPIO lines move once more when they are given back
  std::vector<std::string> frames = log.Lines();
  ASSERT_GT(frames.size(), 10U);
  EXPECT_EQ(Decoded(folder / "cable.vcd"), frames);
  if (chip == ConnectedChip::Rtd2120) std::ranges::for_each(frames, LeaveOutAcknowledge);
  EXPECT_EQ(Decoded(folder / "port.vcd"), frames);
  EXPECT_TRUE(!gpio || FlashEquals(board->vsk830.Bank(0), Image(300)));
  EXPECT_EQ(lines.kernel.gpio.requested, gpio ? "gpiochip0:27 gpiochip0:17 " : "");
  EXPECT_TRUE(lines.told.empty());
}

TEST(Recording, IsReadAsTheFramesThatPassed) {
  for (const auto chip : {ConnectedChip::Vsk830, ConnectedChip::Vsk630, ConnectedChip::Rtd2120}) {
    ExpectRead(chip, false);
  }
  ExpectRead(ConnectedChip::Vsk830, true);
}

TEST(PortRecording, IsBoundedShowsNoPortAsUnknownAndIsToldOnceWhenItCannotBeWritten) {
  const TempFolder folder;
  struct Row {
    std::filesystem::path file;
    const char* reason = nullptr;  // why it cannot be written
  };
  for (const Row& row : {Row{folder / "bus.vcd"},
                         {"/dev/full", "/dev/full: No space left"},
                         {folder.Path(), "Is a directory"}}) {
    std::vector<std::string> told;
    simulator::SimulatedBoard board(simulator::CableWiring());
    {
      RecordingPort port(
          board.cable, row.file, [&](const std::string& text) { told.push_back(text); },
          [] { return 0; }, row.reason == nullptr ? 4 : 100);
      port.UsePort({.base = 0x378});
      for (int i = 0; i < 9; ++i) port.DlPortWritePortUchar(0x378, static_cast<std::uint8_t>(i));
      EXPECT_TRUE(port.DlPortReadPortUchar(0x379).has_value());
    }
    EXPECT_EQ(board.cable.Accesses(), 10U) << "every access comes through";
    ASSERT_EQ(told.size(), row.reason == nullptr ? 0U : 1U);
    EXPECT_TRUE(told.empty() || told[0].find(row.reason) != std::string::npos);
  }
  EXPECT_THAT(folder.Read("bus.vcd"),
              testing::AllOf(HasSubstr("#8\n1D0\n$comment"), Not(HasSubstr("#10\n"))));
  PortRig none;
  RecordingPort(*none.io, folder / "none.vcd", {}).DlPortReadPortUchar(1);
  EXPECT_THAT(folder.Read("none.vcd"), HasSubstr("\nxS0\nxS1\n"));
  EXPECT_FALSE(RecordingPort(*none.io, folder / "none.vcd", {}).StillThere());
}

}  // namespace
