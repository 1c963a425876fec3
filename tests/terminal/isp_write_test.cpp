// isp-write as a whole: what it prints, how it ends, what is in the chip and in the log afterwards.
#include "terminal/isp_write.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <fstream>

#include "image/intel_hex.h"
#include "platform/port_advice.h"
#include "support/images.h"
#include "support/terminal_rig.h"

namespace {

using simulator::ConnectedChip;
using testing::AnyOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

struct IspWriteTest : testing::Test, TerminalRig {
  using TerminalRig::Run;
  const std::string thermostat = Sample("vsk830/thermostat.hex");

  /// The image of a HEX file is in the bank.
  void ExpectFlash(const simulator::Flash& flash, const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    std::vector<std::uint8_t> image(65537, 0xFF);
    image.resize(static_cast<std::size_t>(loadfile::StoreHex(text, image)) + 1);
    EXPECT_TRUE(FlashEquals(flash, image)) << file;
  }
};

TEST_F(IspWriteTest, ProgramsAndVerifiesEachChip) {
  struct Case {
    ConnectedChip chip;
    std::string line, said;
  };
  const std::string kiosk = Sample("vsk630/kiosk.H00");
  const std::string bank1 = Sample("rtd2120/panel-bank1.hex");
  const std::string bank2 = Sample("rtd2120/panel-bank2.hex");
  const std::string emptyBank0 = folder.Write("empty.B00", "");
  folder.Write("empty.B01", "abc");
  const std::string equal = "ok, 3624 bytes, CRC BE1B, 3624 bytes read back, equal\n";
  const Case cases[] = {
      {ConnectedChip::Vsk830, "program vsk830 " + thermostat, "vsk830 program: " + equal},
      {ConnectedChip::Vsk830, "program VSK830 " + thermostat + " --no-compare --quiet",
       "vsk830 program: ok, 3624 bytes, CRC BE1B\n"},
      {ConnectedChip::Vsk630, "program vsk630 " + emptyBank0, "3 bytes, CRC 44D8, bank 0 is empty"},
      {ConnectedChip::Vsk630, "program vsk630 " + kiosk, "equal, only bank 0 can be read back\n"},
      {ConnectedChip::Rtd2120, "program rtd2120 " + bank1 + " --second " + bank2,
       "rtd2120 program: ok, "},
      {ConnectedChip::Rtd2120, "program rtd2120 --second " + bank2, "rtd2120 program: ok, "},
      {ConnectedChip::Vsk830, "compare vsk830 " + thermostat, "vsk830 compare: " + equal},
  };
  for (const Case& each : cases) {
    board.Connect(each.chip);
    EXPECT_EQ(Run(each.line), 0) << each.line << err;
    EXPECT_THAT(out, HasSubstr(each.said));
    EXPECT_FALSE(board.Chip()->InIspMode());
  }
  ExpectFlash(board.vsk830.Bank(0), thermostat);
  ExpectFlash(board.vsk630.Bank(0), kiosk);
  ExpectFlash(board.vsk630.Bank(1), Sample("vsk630/kiosk.H01"));
  ExpectFlash(board.rtd2120.Bank(1), bank2);
  EXPECT_THAT(folder.Read("state/runs.csv"),
              HasSubstr(",VSK830,Program," + thermostat +
                        ",3624,BE1B,BE1B,Write Ok,378,Simulated cable,isp-write\r\n"));
  EXPECT_THAT(folder.Read("state/runs.csv"),
              HasSubstr(",VSK830,Compare," + thermostat + ",3624,,,ok,378,Simulated cable,"));
}

TEST_F(IspWriteTest, NeverCallsDoneWhatTheChipDidNotDo) {
  struct Case {
    std::string line;
    const char* fault;
    std::string failure;
  };
  // 3624 bytes are 15 pages: enter, erase, follow-up, D0, two frames a page, CRC. Silent from the
  // CRC on, a chip reads as CRC 0, which the other image has.
  const std::string vsk = "program vsk830 " + thermostat, rtd = "program rtd2120 " + thermostat;
  const std::string crc0 = folder.Write("crc0.bin", "\x12\x34\x6C\xB6");
  const Case cases[] = {
      {vsk, "unplugged", "isp mode is no exist"},
      {vsk, "Unplugged:8", "programcode fail at page 2"},
      {vsk, "unplugged:34", "the chip did not answer"},
      {"program vsk830 " + crc0 + " --no-compare", "unplugged:6", "the chip did not answer"},
      {vsk, "\"busy for ever\"", "programcode fail"},
      {vsk, "sda-stuck-low", ""},
      {vsk, "byte-refused:2,8", ""},
      {vsk, "flash-bit-flipped:0,0,10", ""},
      {"erase vsk830", "unplugged:1", "Blank fail"},
      {"erase vsk830 --pages 0-7f", "unplugged:1", "the chip did not answer"},
      {"compare vsk830 " + thermostat, "unplugged:3", "the chip did not answer at page 0"},
      {"read vsk830 out.bin", "unplugged:4", "Page Read fail at page 1"},
      {"read vsk830 out.bin", "sda-stuck-low", "isp mode is not out"},
      {rtd, "unplugged:40", "MCU link error at bank 1 page 3,"},
      {rtd, "busy-for-ever", "MCU link error"},
      {rtd, "flash-bit-flipped:3,1,20", "CRC FAIL."},
      {"erase rtd2120", "unplugged", "MCU link error"},
      {"erase rtd2120", "byte-refused:2,5", "the chip did not answer"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.line + " " + each.fault);
    EXPECT_EQ(Run(each.line + " --simulated --fault " + each.fault), 1) << err;
    EXPECT_THAT(out, HasSubstr(": FAILED, " + each.failure));
  }
  EXPECT_FALSE(std::filesystem::exists("out.bin"));
  EXPECT_EQ(opened, 0);

  std::istringstream log(folder.Read("simulated/runs.csv"));
  std::string line;
  std::getline(log, line);
  for (const Case& each : cases) {
    ASSERT_TRUE(std::getline(log, line)) << "each run is logged once";
    EXPECT_THAT(line, AnyOf(HasSubstr(" (red)"), HasSubstr(",CRC Error,"))) << each.fault;
  }
  EXPECT_FALSE(std::getline(log, line));
  EXPECT_THAT(folder.Read("simulated/runs.csv"),
              HasSubstr(",VSK830,Program," + thermostat + ",3624,,,isp mode is no exist (red),"));
}

TEST_F(IspWriteTest, ReadsIntoAFileThatLoadsAgain) {
  board.Connect(ConnectedChip::Vsk830);
  ASSERT_EQ(Run("program vsk830 " + thermostat), 0);
  const auto& cells = board.vsk830.Bank(0).Cells();
  const std::string all = (folder / "all.HEX").string();
  EXPECT_EQ(Run("read vsk830 " + all), 0);
  EXPECT_EQ(out, "vsk830 read: ok, 65536 bytes\n");
  EXPECT_EQ(Run("compare vsk830 " + all + " --strict"), 0) << err;

  const std::string part = (folder / "part.bin").string();
  folder.Write("part.bin", std::string(100'000, 'x'));
  EXPECT_EQ(Run("read vsk830 " + part + " --pages 00F8-0205"), 0);
  EXPECT_EQ(folder.Read("part.bin"), std::string(cells.begin() + 0xF8, cells.begin() + 0x206));
  const std::string hex = (folder / "part.hex").string();
  EXPECT_EQ(Run("read vsk830 " + hex + " --pages 00F8-00FF"), 0);
  EXPECT_THAT(folder.Read("part.hex"), StartsWith(":0800F800"));
  EXPECT_THAT(folder.Names(), Not(testing::Contains(HasSubstr(".part"))));
}

TEST_F(IspWriteTest, TellsTheFirstDifferenceAndHowMany) {
  board.Connect(ConnectedChip::Vsk830);
  const std::string image = folder.Write("a.bin", std::string(300, '\x55'));
  ASSERT_EQ(Run("program vsk830 " + image), 0);
  std::string other(300, '\x55');
  other[0x101] = other[0x105] = '\x54';
  EXPECT_EQ(Run("compare vsk830 " + folder.Write("b.bin", other) + " --json"), 1);
  EXPECT_THAT(out, HasSubstr("\"result\": \"FAILED\""));
  EXPECT_THAT(out, HasSubstr("\"count\": 2,\n    \"address\": \"0101\",\n    \"chip\": "
                             "\"55\",\n    \"file\": \"54\""));
  EXPECT_THAT(out, HasSubstr("\"exitStatus\": 1"));
}

TEST_F(IspWriteTest, ErasesAllOrTheNamedPages) {
  board.Connect(ConnectedChip::Vsk830);
  const std::string image = folder.Write("a.bin", std::string(1000, '\0'));
  const auto erased = [this] {
    const auto& cells = board.vsk830.Bank(0).Cells();
    return std::count(cells.begin(), cells.begin() + 1000, 0xFF);
  };
  ASSERT_EQ(Run("program vsk830 " + image), 0);
  EXPECT_EQ(Run("erase vsk830 --pages 0-0"), 0) << out;
  EXPECT_EQ(erased(), 128) << "an end of 0000 is not the end of the flash";
  EXPECT_EQ(Run("erase vsk830 --pages 0100-017F"), 0);
  EXPECT_EQ(erased(), 256);
  EXPECT_EQ(Run("erase vsk830"), 0);
  EXPECT_EQ(erased(), 1000);
  EXPECT_FALSE(board.vsk830.InIspMode());
  board.Connect(ConnectedChip::Rtd2120);
  EXPECT_EQ(Run("erase rtd2120"), 0) << out;
  EXPECT_FALSE(board.rtd2120.InIspMode());
}

TEST_F(IspWriteTest, RefusesBeforeThePortIsTouched) {
  const std::string missing = (folder / "none.hex").string();
  const std::string odd = folder.Write("odd.hex", ":0100000011EF\r\n:00000001FF\r\n");
  const std::string codes = folder.Write("codes", "\x94\x04\x5A");
  folder.Write("folder.bin/x", "");
  folder.Write("empty.B01", "abc");
  const std::string emptyBank0 = folder.Write("empty.B00", "");
  std::filesystem::copy(Sample("vsk630/kiosk.H01"), folder / "zero.H01");
  struct Case {
    int status;
    std::string line, said;
  };
  const std::string program = "program vsk830 " + thermostat;
  const Case cases[] = {
      {2, "", "a command is missing"},
      {2, "burn", "burn"},
      {2, "program vsk999 " + thermostat, "unknown chip vsk999: it is vsk830, vsk630, or rtd2120"},
      {2, "program vsk830", "program needs a file"},
      {2, program + " --second " + odd, "--second is for"},
      {2, program + " --speed 11", "11 not in range"},
      {2, program + " --port 0", "from 1 to FFFF"},
      {2, program + " --port 10000", "from 1 to FFFF"},
      {2, program + " --board 7", "no board"},
      {2, program + " --fault unplugged", "are for --simulated"},
      {2, "erase vsk830 --simulated --fault rain", "Known are unplugged, busy-for-ever"},
      {2, "erase vsk830 --simulated --fault flash-bit-flipped:8", "no such bit"},
      {2, "erase vsk830 --simulated --fault flash-bit-flipped:0,0,10000", "or address"},
      {2, "erase vsk830 --simulated --fault unplugged:1,2", "at most 1 numbers"},
      {2, "erase vsk830 --pages 0000-8000", "only addresses 0000-7FFF"},
      {2, "erase vsk830 --pages 20-10", "two hexadecimal addresses"},
      {2, "erase rtd2120 --pages 0-1", "erased as a whole"},
      {2, "read rtd2120 x.bin", "cannot be read"},
      {2, "compare rtd2120 " + thermostat, "cannot be read"},
      {2, "read vsk830 x.txt", ".hex or .bin"},
      {3, "read vsk830 " + (folder / "none/x.bin").string(), "folder does not exist"},
      {3, "read vsk830 " + (folder / "folder.bin").string(), "it is a folder"},
      {2, R"(erase vsk830 --pages "")", "it is empty"},
      {2, R"(erase vsk830 --port "")", "it is empty"},
      {2, R"(program rtd2120 "" --second )" + odd, "it is empty"},
      {3, "compare vsk630 " + emptyBank0, "bank 0 is empty"},
      {3, "program vsk830 " + missing, "path or file name error!!!\n" + missing},
      {3, "program rtd2120 " + missing, "the file does not exist"},
      {3, "program vsk830 " + odd + " --strict", "1 line with a wrong checksum"},
      {3, "program vsk830 " + folder.Write("empty.bin", ""), "no byte of an image"},
      {3, "program vsk830 " + folder.Write("end.hex", ":00000001FF\r\n"), "no byte of an image"},
      {3, "program rtd2120 " + folder.Write("end.hex", ":00000001FF\r\n"), "no byte of an image"},
      {3, "program rtd2120 " + folder.Write("a.ihx", ""), "ends in .HEX or .BIN"},
      {3, "program vsk630 " + thermostat, "ends in .H00 or .B00"},
      {3, "--strict program vsk630 " + folder.Write("one.B00", "abc"), "one.B01: missing or empty"},
      {3, "program vsk630 " + folder.Write("zero.H00", ""), "no byte of an image, or its second"},
      {3, program + " --codes " + missing, "no security codes"},
      {3, program + " --codes " + codes, "no file of security codes"},
      {3, "erase vsk830 --simulated --flash " + odd, "does not hold the 65536 bytes"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.line);
    EXPECT_EQ(Run(each.line), each.status) << err;
    EXPECT_THAT(err, HasSubstr(each.said));
    EXPECT_THAT(out, IsEmpty());
  }
  EXPECT_THAT(accesses, IsEmpty());
}

TEST_F(IspWriteTest, APortThatCannotBeUsedIsTold) {
  portProblem = std::string("It is held. ") + port_advice::kThenEnter + port_advice::kUntilThen;
  EXPECT_EQ(Run("program vsk830 " + thermostat + " --json"), 4);
  EXPECT_THAT(err, HasSubstr("isp-write: It is held. Then start isp-write again.\n"));
  EXPECT_THAT(out, HasSubstr("\"result\": \"refused\""));
  for (const std::string line : {"erase vsk830", "read vsk830 a.bin --speed 10", "erase rtd2120"}) {
    EXPECT_EQ(Run(line + " --json"), 4);
    EXPECT_THAT(out, HasSubstr("\"result\": \"refused\"")) << line;
  }
  EXPECT_THAT(accesses, IsEmpty());
  EXPECT_FALSE(std::filesystem::exists(folder / "state")) << "nothing is said of a chip";
}

TEST_F(IspWriteTest, TwoCopiesDoNotUseOnePort) {
  heldByOthers = "isp-write-278";
  EXPECT_EQ(Run("erase vsk830 --port 278"), 4);
  EXPECT_THAT(err, HasSubstr("port 278 is in use by another isp-write"));
  EXPECT_THAT(accesses, IsEmpty());
  EXPECT_EQ(Run("erase vsk830 --port 0x378"), 1) << "nothing is plugged in";
}

TEST_F(IspWriteTest, AFileThatChangedSinceItWasLoadedIsNotProgrammed) {
  for (const std::string chip : {"vsk830", "rtd2120"}) {
    const std::string image = folder.Write("a.bin", "old");
    loaded = [this] { folder.Write("a.bin", "new"); };
    EXPECT_EQ(Run("program " + chip + " " + image), 3);
    EXPECT_THAT(out + err, HasSubstr("the file has changed since it was loaded"));
    EXPECT_THAT(accesses, IsEmpty()) << chip;
  }
}

/// A signal waits for what changes the chip, and ends what only reads.
TEST_F(IspWriteTest, ASignalLeavesNoChipHalfWritten) {
  board.Connect(ConnectedChip::Vsk830);
  onAccess = [this] {
    if (accesses.size() == 5000) signal = SIGTERM;
  };
  EXPECT_EQ(Run("program vsk830 " + thermostat), 128 + SIGTERM);
  ExpectFlash(board.vsk830.Bank(0), thermostat);
  EXPECT_THAT(err, HasSubstr("interrupted, 3624 bytes, CRC BE1B, not read back\n"));
  EXPECT_FALSE(board.vsk830.InIspMode());
  const std::size_t programmed = accesses.size();

  signal = 0;
  accesses.clear();
  EXPECT_EQ(Run("read vsk830 " + (folder / "a.bin").string()), 128 + SIGTERM);
  EXPECT_LT(accesses.size(), programmed);
  EXPECT_THAT(folder.Read("state/runs.csv"),
              HasSubstr(",Read," + (folder / "a.bin").string() + ",256,,,interrupted (red),378,"));
  EXPECT_FALSE(std::filesystem::exists(folder / "a.bin"));
  EXPECT_FALSE(board.vsk830.InIspMode());

  accesses.clear();
  EXPECT_EQ(Run("erase vsk830"), 128 + SIGTERM) << "it came before the beginning";
  EXPECT_THAT(accesses, IsEmpty());
}

TEST_F(IspWriteTest, KeepsASimulatedFlashBetweenCalls) {
  const std::string flash = (folder / "chip").string();
  for (const std::string chip : {"vsk830", "vsk630"}) {
    const std::string kept = " --simulated --flash " + flash + " ";
    const std::string image =
        chip + " " + (chip == "vsk830" ? thermostat : Sample("vsk630/kiosk.H00"));
    EXPECT_EQ(Run("compare" + kept + image), 1) << "it is erased";
    EXPECT_EQ(Run("program" + kept + image), 0) << err;
    EXPECT_EQ(Run("compare" + kept + image), 0) << err;
    EXPECT_EQ(folder.Read("chip").size(), chip == "vsk830" ? 65536 : 131072);
    std::filesystem::remove(flash);
  }
  EXPECT_THAT(folder.Read("simulated/runs.csv"), HasSubstr("Compare"));
  EXPECT_FALSE(std::filesystem::exists(folder / "state"));
}

TEST_F(IspWriteTest, ListsBoardsAndWhatALoadShows) {
  EXPECT_EQ(Run("boards"), 0);
  EXPECT_EQ(out, "   0  Not connected\n*  1  Simulated cable\n");
  std::ofstream(folder / "program/Initial/InitPort.csv", std::ios::app) << "\r\n\r\n";
  EXPECT_EQ(Run("boards"), 0);
  EXPECT_EQ(out, "   0  Not connected\n*  1  Simulated cable\n") << "blank lines announce nothing";
  EXPECT_EQ(Run("check " + Sample("vsk630/kiosk.H00")), 0);
  EXPECT_THAT(out, HasSubstr("kiosk.H01\n"));
  EXPECT_EQ(Run("check " + Sample("rtd2120/panel-bank1.hex") + " rtd2120"), 0);
  EXPECT_THAT(out, Not(HasSubstr("CRC")));
  EXPECT_EQ(Run("program --help"), 0);
  EXPECT_THAT(out, HasSubstr("--no-compare"));
  EXPECT_EQ(opened, 0);
}

TEST_F(IspWriteTest, ATerminalGetsOneLineThatIsWrittenAnew) {
  errIsTerminal = true;
  EXPECT_EQ(Run("--simulated program vsk830 " + thermostat), 0);
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1);
  EXPECT_THAT(err, HasSubstr("\r\x1b[?7lprogram vsk830 [##########..........] 50 %  0:00 left  "));
  EXPECT_THAT(err, HasSubstr("[####################] 100 %"));
  EXPECT_EQ(Run("--simulated --quiet program vsk830 " + thermostat), 0);
  EXPECT_THAT(err, IsEmpty());
}

}  // namespace
