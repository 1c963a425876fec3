// isp-write as a whole: what it prints, how it ends, what is in the chip and in the log afterwards.
#include "terminal/isp_write.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>

#include "image/crc16.h"
#include "image/intel_hex.h"
#include "platform/port_advice.h"
#include "support/images.h"
#include "support/terminal_rig.h"

namespace {

using simulator::ConnectedChip;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

using Words = std::vector<std::string>;

struct IspWriteTest : testing::Test {
  std::unique_ptr<TerminalRig> rig = std::make_unique<TerminalRig>();
  simulator::SimulatedBoard& board = rig->board;
  const std::string thermostat = rig->Sample("vsk830/thermostat.hex");

  /// The image of a HEX file is in the bank.
  void ExpectFlash(const simulator::Flash& flash, const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    std::vector<std::uint8_t> image(65537, 0xFF);
    image.resize(static_cast<std::size_t>(loadfile::StoreHex(text, image).maximum) + 1);
    EXPECT_TRUE(FlashEquals(flash, image)) << file;
  }
};

TEST_F(IspWriteTest, ProgramsAndVerifiesEachChip) {
  struct Case {
    ConnectedChip chip;
    Words arguments;
    std::string said;
  };
  const std::string kiosk = rig->Sample("vsk630/kiosk.H00");
  const std::string bank1 = rig->Sample("rtd2120/panel-bank1.hex");
  const std::string bank2 = rig->Sample("rtd2120/panel-bank2.hex");
  const std::string emptyBank0 = rig->folder.Write("empty.B00", "");
  rig->folder.Write("empty.B01", "abc");
  const std::vector<Case> cases{
      {ConnectedChip::Vsk830,
       {"program", "vsk830", thermostat},
       "vsk830 program: ok, 3624 bytes, CRC BE1B, 3624 bytes read back, equal\n"},
      {ConnectedChip::Vsk830,
       {"program", "VSK830", thermostat, "--no-compare", "--quiet"},
       "vsk830 program: ok, 3624 bytes, CRC BE1B\n"},
      {ConnectedChip::Vsk630,
       {"program", "vsk630", emptyBank0},
       "3 bytes, CRC 44D8, bank 0 is empty"},
      {ConnectedChip::Vsk630,
       {"program", "vsk630", kiosk},
       "equal, only bank 0 can be read back\n"},
      {ConnectedChip::Rtd2120,
       {"program", "rtd2120", bank1, "--second", bank2},
       "rtd2120 program: ok, "},
      {ConnectedChip::Rtd2120, {"program", "rtd2120", "--second", bank2}, "rtd2120 program: ok, "},
      {ConnectedChip::Vsk830,
       {"compare", "vsk830", thermostat},
       "vsk830 compare: ok, 3624 bytes, CRC BE1B, 3624 bytes read back, equal\n"},
  };
  for (const Case& each : cases) {
    board.Connect(each.chip);
    EXPECT_EQ(rig->Run(each.arguments), 0) << rig->err;
    EXPECT_THAT(rig->out, HasSubstr(each.said));
    EXPECT_FALSE(board.Chip()->InIspMode());
  }
  ExpectFlash(board.vsk830.Bank(0), thermostat);
  ExpectFlash(board.vsk630.Bank(0), kiosk);
  ExpectFlash(board.vsk630.Bank(1), rig->Sample("vsk630/kiosk.H01"));
  ExpectFlash(board.rtd2120.Bank(1), bank2);
  EXPECT_THAT(rig->folder.Read("state/runs.csv"),
              HasSubstr(",VSK830,Program," + thermostat +
                        ",3624,BE1B,BE1B,Write Ok,378,Simulated cable,isp-write\r\n"));
  EXPECT_THAT(rig->folder.Read("state/runs.csv"),
              HasSubstr(",VSK830,Compare," + thermostat + ",3624,,,ok,378,Simulated cable,"));
}

TEST_F(IspWriteTest, NeverCallsDoneWhatTheChipDidNotDo) {
  struct Case {
    const char* command;
    Words more;
    const char* fault;
    std::string failure;
  };
  // 3624 bytes are 15 pages: enter, erase, follow-up, D0, two frames a page, CRC.
  const std::string image = rig->Sample("vsk830/thermostat.hex");
  const std::vector<Case> cases{
      {"program", {"vsk830", image}, "unplugged", "isp mode is no exist"},
      {"program", {"vsk830", image}, "Unplugged:8", "programcode fail at page "},
      {"program", {"vsk830", image}, "unplugged:34", "the chip did not answer"},
      {"program", {"vsk830", image}, "busy for ever", "programcode fail"},
      {"program", {"vsk830", image}, "sda-stuck-low", ""},
      {"program", {"vsk830", image}, "byte-refused:2,8", ""},
      {"program", {"vsk830", image}, "flash-bit-flipped:0,0,10", ""},
      {"erase", {"vsk830"}, "unplugged:1", "Blank fail"},
      {"erase", {"vsk830", "--pages", "0-7f"}, "unplugged:1", "the chip did not answer"},
      {"compare", {"vsk830", image}, "unplugged:3", "the chip did not answer at page 0"},
      {"read", {"vsk830", "out.bin"}, "unplugged:4", "Page Read fail at page 1"},
      {"read", {"vsk830", "out.bin"}, "sda-stuck-low", "isp mode is not out"},
      {"program", {"rtd2120", image}, "unplugged:40", "MCU link error at bank 1 page "},
      {"program", {"rtd2120", image}, "busy-for-ever", "MCU link error"},
      {"program", {"rtd2120", image}, "flash-bit-flipped:3,1,20", "CRC FAIL."},
      {"erase", {"rtd2120"}, "unplugged", "MCU link error"},
      {"erase", {"rtd2120"}, "byte-refused:2,5", "the chip did not answer"},
  };
  for (const Case& each : cases) {
    Words words{each.command};
    words.insert(words.end(), each.more.begin(), each.more.end());
    words.insert(words.end(), {"--simulated", "--fault", each.fault});
    EXPECT_EQ(rig->Run(words), 1) << each.command << " " << each.fault << rig->err;
    EXPECT_THAT(rig->out, HasSubstr(": FAILED, " + each.failure)) << each.fault;
  }
  EXPECT_FALSE(std::filesystem::exists("out.bin"));
  EXPECT_EQ(rig->opened, 0);
}

/// Silent from the CRC on, a chip reads as CRC 0, which this image has.
TEST_F(IspWriteTest, ASilentChipIsNotOneWithACrcOfZero) {
  board.Connect(ConnectedChip::Vsk830);
  std::string bytes = "\x12\x34";
  const std::vector<std::uint8_t> before(bytes.begin(), bytes.end());
  const std::uint16_t crc = tongxun::CrcBytes(0xFFFF, before);
  bytes += {static_cast<char>(crc >> 8), static_cast<char>(crc)};  // which takes it to 0
  const std::string image = rig->folder.Write("crc0.bin", bytes);
  EXPECT_EQ(rig->Run({"program", "vsk830", image, "--no-compare"}), 0) << rig->out;
  board.faults.unpluggedAfterFrame = board.wire.FramesSeen() + 6;
  EXPECT_EQ(rig->Run({"program", "vsk830", image, "--no-compare"}), 1);
  EXPECT_THAT(rig->out, HasSubstr("FAILED, the chip did not answer"));
}

TEST_F(IspWriteTest, ReadsIntoAFileThatLoadsAgain) {
  board.Connect(ConnectedChip::Vsk830);
  ASSERT_EQ(rig->Run({"program", "vsk830", thermostat}), 0);
  const auto& cells = board.vsk830.Bank(0).Cells();
  const std::string all = (rig->folder / "all.HEX").string();
  EXPECT_EQ(rig->Run({"read", "vsk830", all}), 0);
  EXPECT_EQ(rig->out, "vsk830 read: ok, 65536 bytes\n");
  EXPECT_EQ(rig->Run({"compare", "vsk830", all, "--strict"}), 0) << rig->err;

  const std::string part = (rig->folder / "part.bin").string();
  rig->folder.Write("part.bin", std::string(100'000, 'x'));
  EXPECT_EQ(rig->Run({"read", "vsk830", part, "--pages", "00F8-0205"}), 0);
  EXPECT_EQ(rig->folder.Read("part.bin"), std::string(cells.begin() + 0xF8, cells.begin() + 0x206));
  const std::string hex = (rig->folder / "part.hex").string();
  EXPECT_EQ(rig->Run({"read", "vsk830", hex, "--pages", "00F8-00FF"}), 0);
  EXPECT_THAT(rig->folder.Read("part.hex"), StartsWith(":0800F800"));
  EXPECT_THAT(rig->folder.Names(), Not(testing::Contains(HasSubstr(".part"))));
}

TEST_F(IspWriteTest, TellsTheFirstDifferenceAndHowMany) {
  board.Connect(ConnectedChip::Vsk830);
  const std::string image = rig->folder.Write("a.bin", std::string(300, '\x55'));
  ASSERT_EQ(rig->Run({"program", "vsk830", image}), 0);
  std::string other(300, '\x55');
  other[0x101] = other[0x105] = '\x54';
  EXPECT_EQ(rig->Run({"compare", "vsk830", rig->folder.Write("b.bin", other), "--json"}), 1);
  EXPECT_THAT(rig->out, HasSubstr("\"result\": \"FAILED\""));
  EXPECT_THAT(rig->out, HasSubstr("\"count\": 2,\n    \"address\": \"0101\",\n    \"chip\": "
                                  "\"55\",\n    \"file\": \"54\""));
  EXPECT_THAT(rig->out, HasSubstr("\"exitStatus\": 1"));
}

TEST_F(IspWriteTest, ErasesAllOrTheNamedPages) {
  board.Connect(ConnectedChip::Vsk830);
  const std::string image = rig->folder.Write("a.bin", std::string(1000, '\0'));
  const auto erased = [this] {
    const auto& cells = board.vsk830.Bank(0).Cells();
    return std::count(cells.begin(), cells.begin() + 1000, 0xFF);
  };
  ASSERT_EQ(rig->Run({"program", "vsk830", image}), 0);
  EXPECT_EQ(rig->Run({"erase", "vsk830", "--pages", "0-0"}), 0) << rig->out;
  EXPECT_EQ(erased(), 128) << "an end of 0000 is not the end of the flash";
  EXPECT_EQ(rig->Run({"erase", "vsk830", "--pages", "0100-017F"}), 0);
  EXPECT_EQ(erased(), 256);
  EXPECT_EQ(rig->Run({"erase", "vsk830"}), 0);
  EXPECT_EQ(erased(), 1000);
  EXPECT_FALSE(board.vsk830.InIspMode());
  board.Connect(ConnectedChip::Rtd2120);
  EXPECT_EQ(rig->Run({"erase", "rtd2120"}), 0) << rig->out;
  EXPECT_FALSE(board.rtd2120.InIspMode());
}

TEST_F(IspWriteTest, RefusesBeforeThePortIsTouched) {
  const std::string missing = (rig->folder / "none.hex").string();
  const std::string odd = rig->folder.Write("odd.hex", ":0100000011EF\r\n:00000001FF\r\n");
  const std::string codes = rig->folder.Write("codes", "\x94\x04\x5A");
  rig->folder.Write("folder.bin/x", "");
  rig->folder.Write("empty.B01", "abc");
  const std::string emptyBank0 = rig->folder.Write("empty.B00", "");
  struct Case {
    int status;
    Words arguments;
    std::string said;
  };
  const std::vector<Case> cases{
      {2, {}, "a command is missing"},
      {2, {"burn"}, "burn"},
      {2,
       {"program", "vsk999", thermostat},
       "unknown chip vsk999: it is vsk830, vsk630, or rtd2120"},
      {2, {"program", "vsk830"}, "program needs a file"},
      {2, {"program", "vsk830", thermostat, "--second", odd}, "--second is for"},
      {2, {"program", "vsk830", thermostat, "--speed", "11"}, "11 not in range"},
      {2, {"program", "vsk830", thermostat, "--port", "0"}, "from 1 to FFFF"},
      {2, {"program", "vsk830", thermostat, "--port", "10000"}, "from 1 to FFFF"},
      {2, {"program", "vsk830", thermostat, "--board", "7"}, "no board"},
      {2, {"program", "vsk830", thermostat, "--fault", "unplugged"}, "are for --simulated"},
      {2,
       {"erase", "vsk830", "--simulated", "--fault", "rain"},
       "Known are unplugged, busy-for-ever"},
      {2, {"erase", "vsk830", "--simulated", "--fault", "flash-bit-flipped:8"}, "no such bit"},
      {2, {"erase", "vsk830", "--simulated", "--fault", "unplugged:1,2"}, "at most 1 numbers"},
      {2, {"erase", "vsk830", "--pages", "0000-8000"}, "only addresses 0000-7FFF"},
      {2, {"erase", "vsk830", "--pages", "20-10"}, "two hexadecimal addresses"},
      {2, {"erase", "rtd2120", "--pages", "0-1"}, "erased as a whole"},
      {2, {"read", "rtd2120", "x.bin"}, "cannot be read"},
      {2, {"compare", "rtd2120", thermostat}, "cannot be read"},
      {2, {"read", "vsk830", "x.txt"}, ".hex or .bin"},
      {3, {"read", "vsk830", (rig->folder / "none/x.bin").string()}, "folder does not exist"},
      {3, {"read", "vsk830", (rig->folder / "folder.bin").string()}, "it is a folder"},
      {2, {"erase", "vsk830", "--pages", ""}, "it is empty"},
      {2, {"erase", "vsk830", "--port", ""}, "it is empty"},
      {2, {"program", "rtd2120", "", "--second", odd}, "it is empty"},
      {3, {"compare", "vsk630", emptyBank0}, "bank 0 is empty"},
      {3, {"program", "vsk830", missing}, "path or file name error!!!\n" + missing},
      {3, {"program", "rtd2120", missing}, "the file does not exist"},
      {3, {"program", "vsk830", odd, "--strict"}, "1 line with a wrong checksum"},
      {3, {"program", "vsk830", rig->folder.Write("empty.bin", "")}, "no byte of an image"},
      {3, {"program", "vsk830", thermostat, "--codes", missing}, "no security codes"},
      {3, {"program", "vsk830", thermostat, "--codes", codes}, "no file of security codes"},
      {3, {"erase", "vsk830", "--simulated", "--flash", odd}, "does not hold the 65536 bytes"},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(rig->Run(each.arguments), each.status) << each.said << "\n" << rig->err;
    EXPECT_THAT(rig->err, HasSubstr(each.said));
    EXPECT_THAT(rig->out, IsEmpty());
  }
  EXPECT_THAT(rig->accesses.all, IsEmpty());
}

TEST_F(IspWriteTest, APortThatCannotBeUsedIsTold) {
  rig->portProblem =
      std::string("It is held. ") + port_advice::kThenEnter + port_advice::kUntilThen;
  EXPECT_EQ(rig->Run({"program", "vsk830", thermostat, "--json"}), 4);
  EXPECT_THAT(rig->err, HasSubstr("isp-write: It is held. Then start isp-write again.\n"));
  EXPECT_THAT(rig->out, HasSubstr("\"result\": \"refused\""));
  EXPECT_THAT(rig->accesses.all, IsEmpty());
}

TEST_F(IspWriteTest, TwoCopiesDoNotUseOnePort) {
  rig->heldByOthers = "isp-write-278";
  EXPECT_EQ(rig->Run({"erase", "vsk830", "--port", "278"}), 4);
  EXPECT_THAT(rig->err, HasSubstr("port 278 is in use by another isp-write"));
  EXPECT_THAT(rig->accesses.all, IsEmpty());
  EXPECT_EQ(rig->Run({"erase", "vsk830", "--port", "378"}), 1) << "nothing is plugged in";
}

TEST_F(IspWriteTest, AFileThatChangedSinceItWasLoadedIsNotProgrammed) {
  for (const char* chip : {"vsk830", "rtd2120"}) {
    const std::string image = rig->folder.Write("a.bin", "old");
    rig->loaded = [this] { rig->folder.Write("a.bin", "new"); };
    EXPECT_EQ(rig->Run({"program", chip, image}), 3);
    EXPECT_THAT(rig->out + rig->err, HasSubstr("the file has changed since it was loaded"));
    EXPECT_THAT(rig->accesses.all, IsEmpty()) << chip;
  }
}

/// A signal waits for what changes the chip, and ends what only reads.
TEST_F(IspWriteTest, ASignalLeavesNoChipHalfWritten) {
  board.Connect(ConnectedChip::Vsk830);
  rig->accesses.onAccess = [this] {
    if (rig->accesses.all.size() == 5000) rig->signal = SIGTERM;
  };
  EXPECT_EQ(rig->Run({"program", "vsk830", thermostat}), 128 + SIGTERM);
  ExpectFlash(board.vsk830.Bank(0), thermostat);
  EXPECT_THAT(rig->err, HasSubstr("interrupted, 3624 bytes, CRC BE1B, not read back\n"));
  EXPECT_FALSE(board.vsk830.InIspMode());
  const std::size_t programmed = rig->accesses.all.size();

  rig->signal = 0;
  rig->accesses.all.clear();
  EXPECT_EQ(rig->Run({"read", "vsk830", (rig->folder / "a.bin").string()}), 128 + SIGTERM);
  EXPECT_LT(rig->accesses.all.size(), programmed);
  EXPECT_THAT(
      rig->folder.Read("state/runs.csv"),
      HasSubstr(",Read," + (rig->folder / "a.bin").string() + ",256,,,interrupted (red),378,"));
  EXPECT_FALSE(std::filesystem::exists(rig->folder / "a.bin"));
  EXPECT_FALSE(board.vsk830.InIspMode());

  rig->accesses.all.clear();
  EXPECT_EQ(rig->Run({"erase", "vsk830"}), 128 + SIGTERM) << "it came before the beginning";
  EXPECT_THAT(rig->accesses.all, IsEmpty());
}

TEST_F(IspWriteTest, KeepsASimulatedFlashBetweenCalls) {
  const std::string flash = (rig->folder / "chip").string();
  const Words simulated{"--simulated", "--flash", flash};
  const auto run = [&](Words words) {
    words.insert(words.begin(), simulated.begin(), simulated.end());
    return rig->Run(words);
  };
  for (const char* chip : {"vsk830", "vsk630"}) {
    EXPECT_EQ(run({"compare", chip, rig->Sample("vsk630/kiosk.H00")}), 1) << "it is erased";
    EXPECT_EQ(run({"program", chip, rig->Sample("vsk630/kiosk.H00")}), 0) << rig->err;
    EXPECT_EQ(run({"compare", chip, rig->Sample("vsk630/kiosk.H00")}), 0) << rig->err;
    EXPECT_EQ(rig->folder.Read("chip").size(), chip == std::string("vsk830") ? 65536 : 131072);
    std::filesystem::remove(flash);
  }
  EXPECT_THAT(rig->folder.Read("simulated/runs.csv"), HasSubstr("Compare"));
  EXPECT_FALSE(std::filesystem::exists(rig->folder / "state"));
}

TEST_F(IspWriteTest, ListsBoardsAndWhatALoadShows) {
  EXPECT_EQ(rig->Run({"boards"}), 0);
  EXPECT_EQ(rig->out, "   0  Not connected\n*  1  Simulated cable\n");
  EXPECT_EQ(rig->Run({"check", rig->Sample("vsk630/kiosk.H00")}), 0);
  EXPECT_THAT(rig->out, HasSubstr("kiosk.H01\n"));
  EXPECT_EQ(rig->Run({"check", rig->Sample("rtd2120/panel-bank1.hex"), "rtd2120"}), 0);
  EXPECT_THAT(rig->out, Not(HasSubstr("CRC")));
  EXPECT_EQ(rig->Run({"--version"}), 0);
  EXPECT_EQ(rig->out, "isp-write 0\n");
  EXPECT_EQ(rig->Run({"program", "--help"}), 0);
  EXPECT_THAT(rig->out, HasSubstr("--no-compare"));
  EXPECT_EQ(rig->opened, 0);
}

TEST_F(IspWriteTest, ATerminalGetsOneLineThatIsWrittenAnew) {
  rig->errIsTerminal = true;
  EXPECT_EQ(rig->Run({"--simulated", "program", "vsk830", thermostat}), 0);
  EXPECT_EQ(std::count(rig->err.begin(), rig->err.end(), '\n'), 1);
  EXPECT_THAT(rig->err,
              HasSubstr("\r\x1b[?7lprogram vsk830 [##########..........] 50 %  0:00 left  "));
  EXPECT_THAT(rig->err, HasSubstr("[####################] 100 %"));
  EXPECT_EQ(rig->Run({"--simulated", "--quiet", "program", "vsk830", thermostat}), 0);
  EXPECT_THAT(rig->err, IsEmpty());
}

}  // namespace
