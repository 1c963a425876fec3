// Recordings of the bus: a logic analyser's own I2C decoder finds in them the frames that passed.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>

#include "bus/recording_port.h"
#include "simulator/bus_log.h"
#include "simulator/simulated_board.h"
#include "support/fake_ticks.h"
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

void ProgramVsk(Tool& tool, VskChip chip) {
  const auto image = Image(300);
  tongxun::VskImages& images = tool.vskImages;
  for (auto* cells : {&images.CodeBuffer, &images.CodeBank0, &images.CodeBank1}) {
    std::copy(image.begin(), image.end(), cells->begin());
  }
  images.CodeMax = images.CodeBank0Max = images.CodeBank1Max = 299;
  tool.isp.ChipSelect = chip;
  tool.frames.IspParams = {0x94, 2, 0x5A, 0xA5};
  Transcript view;
  tool.isp.EnterIspMode(view);
  tool.isp.DoProgram(view);
  tool.isp.EnterIspMode(view);
  tool.isp.ReadChipPage(1, view);
  EXPECT_EQ(tool.frames.IspRxBuf[0], image[256]);
}

void WriteRtd2120(Tool& tool) {
  tongxun2120::RtdImages& images = tool.rtdImages;
  images.Bank1Loaded = images.Bank2Loaded = true;
  images.Bank1Max = images.Bank2Max = 299;
  tool.rtdWriter.BankMode = tongxun2120::RtdBankMode::Both;
  RtdTranscript view;
  tool.rtdWriter.Run(view);
  EXPECT_THAT(view.text, testing::EndsWith("CRC OK.\r\n"));
}

struct Recorded {
  const char* name;
  ConnectedChip chip;
  void (*session)(Tool& tool);
};

void ExpectFrames(const Recorded& row) {
  SCOPED_TRACE(row.name);
  const TempFolder folder;
  const auto board = std::make_unique<simulator::SimulatedBoard>(simulator::CableWiring());
  board->Connect(row.chip);
  simulator::FrameLog log;
  board->wire.ListenTo(&log);
  {
    std::ofstream cableFile(folder / "cable.vcd");
    simulator::VcdRecorder recorder(cableFile);
    board->cable.ListenTo(&recorder);
    std::uint64_t now_ns = 0;
    RecordingPort port(board->cable, folder / "port.vcd", {}, [&] { return now_ns += 1000; });
    FakeTicks ticks{4};
    const auto tool = std::make_unique<Tool>(port, ticks, Directories{}, Problem{});
    port.FollowBoards(tool->boards);
    tool->boards.BoardTable[0] = simulator::CableWiring();
    tool->port.InitPortShadows();
    row.session(*tool);
  }
  ASSERT_GT(log.Lines().size(), 10U);
  EXPECT_EQ(Decoded(folder / "cable.vcd"), log.Lines());

  std::vector<std::string> seen = log.Lines();
  for (std::string& frame : seen) {  // the one acknowledge that the tool does not look at
    const std::size_t unseen = frame.find("Sr 95 [", 0);
    if (row.chip == ConnectedChip::Rtd2120 && unseen != std::string::npos) {
      frame.insert(unseen + 5, "-");
    }
  }
  EXPECT_EQ(Decoded(folder / "port.vcd"), seen);
}

TEST(Recording, IsReadAsTheFramesThatPassed) {
  ExpectFrames({"VSK830", ConnectedChip::Vsk830, [](Tool& t) { ProgramVsk(t, VskChip::Vsk830); }});
  ExpectFrames({"VSK630", ConnectedChip::Vsk630, [](Tool& t) { ProgramVsk(t, VskChip::Vsk630); }});
  ExpectFrames({"RTD2120", ConnectedChip::Rtd2120, WriteRtd2120});
}

struct PortRecording : testing::Test {
  /// Ten accesses to a recorded port; false when one did not come through.
  bool Use(const std::filesystem::path& file, std::uint64_t mostAccesses) {
    RecordingPort port(
        board->cable, file, [this](const std::string& text) { told.push_back(text); },
        [] { return 0; }, mostAccesses);
    port.UsePort(0x378);
    for (int i = 0; i < 9; ++i) port.DlPortWritePortUchar(0x378, static_cast<std::uint8_t>(i));
    return port.DlPortReadPortUchar(0x379).has_value() && board->cable.Accesses() == 10;
  }

  TempFolder folder;
  std::unique_ptr<simulator::SimulatedBoard> board =
      std::make_unique<simulator::SimulatedBoard>(simulator::CableWiring());
  std::vector<std::string> told;
};

/// A port that is not there.
struct NoPort final : PortIo {
  void DlPortWritePortUchar(std::uint32_t, std::uint8_t) override {}
  std::optional<std::uint8_t> DlPortReadPortUchar(std::uint32_t) override { return std::nullopt; }
};

TEST_F(PortRecording, ShowsReadingsOfNoPortAsUnknown) {
  NoPort none;
  RecordingPort(none, folder / "bus.vcd", {}).DlPortReadPortUchar(1);
  EXPECT_THAT(folder.Read("bus.vcd"), HasSubstr("\nxS0\nxS1\n"));
}

TEST_F(PortRecording, IsBounded) {
  EXPECT_TRUE(Use(folder / "bus.vcd", 4));
  EXPECT_THAT(folder.Read("bus.vcd"), HasSubstr("#8\n1D0\n$comment"));
  EXPECT_THAT(folder.Read("bus.vcd"), Not(HasSubstr("#10\n")));
  EXPECT_TRUE(told.empty());
}

TEST_F(PortRecording, ThatCannotBeWrittenIsToldOnce) {
  for (const auto& [file, reason] :
       {std::pair<std::filesystem::path, const char*>{"/dev/full", "/dev/full: No space left"},
        {folder.Path(), "Is a directory"}}) {
    told.clear();
    board = std::make_unique<simulator::SimulatedBoard>(simulator::CableWiring());
    EXPECT_TRUE(Use(file, 100));
    EXPECT_THAT(told, testing::ElementsAre(HasSubstr(reason)));
  }
}

}  // namespace
