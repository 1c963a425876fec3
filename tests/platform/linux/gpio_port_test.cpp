// When a port of GPIO lines is used, what the operator is told when it cannot be, and what is
// listed.
#include <gmock/gmock.h>

#include "platform/linux/gpio_access.h"
#include "support/gpio_rig.h"
#include "support/has_parts.h"
#include "text/hex_text.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const PortUse kUse{.base = GpioRig::kBase, .sampled = 0x40, .data = 0x7F, .control = 0x04};
const std::string kRows = "data,0,gpiochip0,17\nstatus,6,gpiochip0,17\ncontrol,2,gpiochip0,27\n";
const std::string kPort = "address,6710\n";
const std::string kThenEnter = "Then enter the address again in the Setting window.\n\n";

/// The row's parts, with the file's name where "FILE" stands.
auto Tells(const GpioRig& rig, std::string parts) {
  const std::string file = rig / "GpioPort.csv";
  if (const auto at = parts.find("FILE"); at != std::string::npos) parts.replace(at, 4, file);
  return HasParts(parts);
}

/// What differs on the machine.
using Change = std::function<void(GpioRig& rig)>;

Change Fails(const char* call, int error, const char* group = "lp") {
  return [=](GpioRig& rig) {
    rig.kernel.failures[call] = error;
    rig.kernel.group = group;
  };
}
Change HasChip(const char* node, const char* name, const char* label, int refused = 0) {
  return [=](GpioRig& rig) {
    rig.kernel.gpio.chips.push_back({.node = node, .name = name, .label = label});
    rig.kernel.gpio.chips.back().lines.resize(4);
    rig.kernel.gpio.chips.back().refused = refused;
  };
}
Change HasLine(std::size_t number, const FakeGpioLine& line) {
  return [=](GpioRig& rig) { rig.kernel.gpio.Line(number) = line; };
}

struct Case {
  std::string file;
  std::string told;  // empty: the port is taken
  Change change = [](GpioRig&) {};
};

TEST(GpioPort, IsTakenOrItsProblemIsToldAndListed) {
  const std::string sda = "Line 17 (GPIO17) of /dev/gpiochip0 ";
  const std::string mend = ". Mend the row. " + kThenEnter;
  const auto line = [](const std::string& chip, const std::string& number) {
    return kPort + "data,0," + chip + "," + number + "\n";
  };
  const std::string header = line("header", "1") + "status,6,header,1\n";
  const std::string named = "0 (GPIO0), 1 (GPIO1), ";
  const std::string udev = "install a udev rule for this one chip";
  const std::string shipped = kPort + kRows;
  const Case cases[] = {
      {shipped, ""},
      {"\"address\", 6710,,\r\n\r\nData,0,/dev/gpiochip0,GPIO17,\r\nSTATUS,6,header,17\r\n"
       "control,2,gpiochip0,\"GPIO27\"",
       ""},
      {"address,378\ndata,9\n" + shipped, ""},
      {shipped + "address,6711\n", ""},
      {"address,12345\n" + shipped, ""},
      // Rows.
      {kPort + "data,8,gpiochip0,17\n",
       "Row 2 of FILE cannot be read: field 2 is \"8\" and must be the number of a bit from 0 to "
       "7" +
           mend},
      {kPort + "\nclock,2,gpiochip0,27\n",
       "Row 3|field 1 is \"clock\" and must be address, data, status or control"},
      {kPort + "data,0\n", "Row 2|field 3 is \"\" and must be the name, the label"},
      {kPort + "data,0,gpiochip0\n", "Row 2|field 4 is \"\" and must be the number or"},
      {"address,6710,1\n" + kRows, "Row 1|field 3 is \"1\" and must be left out"},
      {kPort, "FILE has the address of port 0x6710, but no line|Add the rows"},
      {shipped + "data,0,gpiochip0,18\n",
       "Row 5 of FILE names its bit a second time|Mend the row. " + kThenEnter},
      {shipped + "control,1,gpiochip0,GPIO17\n",
       "Row 5|names line 17 (GPIO17) of /dev/gpiochip0 a second time"},
      // Chips.
      {line("gpiochip7", "1"),
       "no GPIO chip \"gpiochip7\", which row 2 of FILE names.|These chips exist: /dev/gpiochip0 "
       "(header, 28 lines). Name one of them in the row. " +
           kThenEnter},
      {line("/dev/gpio/none", "1"), "no GPIO chip \"/dev/gpio/none\"|/dev/gpiochip0 ("},
      {line("header", "1"),
       "no GPIO chip \"header\"|Linux knows no GPIO chip on this machine. Load the driver",
       [](GpioRig& rig) { rig.kernel.gpio.chips.clear(); }},
      {line("header", "1"),
       "Several GPIO chips have the label \"header\"|/dev/gpiochip0, /dev/gpiochip1. Name one of",
       HasChip("/dev/gpiochip1", "gpiochip1", "header")},
      {header, "", HasChip("/dev/gpiochip4", "gpiochip0", "header")},
      {header, "", HasChip("/dev/gpiochip1", "gpiochip1", "power", EACCES)},
      {line("/dev/gpiochip0", "1"),
       "/dev/gpiochip0 is no GPIO chip (GPIO_GET_CHIPINFO_IOCTL: Inappropriate",
       Fails("chipinfo", ENOTTY)},
      {shipped, "/dev/gpiochip0 cannot be opened (open: Too many open files).",
       Fails("open", EMFILE)},
      {shipped,
       "No permission to open /dev/gpiochip0. It belongs to the group \"gpio\".|    sudo usermod "
       "-aG gpio $USER\nor " +
           udev + "|" + kThenEnter,
       Fails("open", EACCES, "gpio")},
      {shipped, "group \"root\". To get the permission, " + udev, Fails("open", EACCES, "root")},
      {line("header", "1"), "No permission to open /dev/gpiochip0.", Fails("open", EACCES)},
      {shipped, "/dev/gpiochip0 is refused even to root (open: Operation not permitted",
       [](GpioRig& rig) {
         rig.kernel.failures["open"] = EPERM;
         rig.kernel.root = true;
       }},
      // Lines.
      {line("header", "28"),
       "/dev/gpiochip0 (header, 28 lines) has no line \"28\", which row 2 of FILE names. Its lines "
       "have the numbers 0 to 27, and names: " +
           named + "|Name one of them in the row. " + kThenEnter},
      {line("gpiochip0", "SDA"), "no line \"SDA\"|and names: " + named},
      {line("power", "SDA"), "no line \"SDA\"|numbers 0 to 3, and no names.",
       HasChip("/dev/gpiochip1", "gpiochip1", "power")},
      {line("gpiochip0", "-1"), "no line \"-1\""},
      {line("gpiochip0", "GPIO1"),
       "Several lines of /dev/gpiochip0 have the name \"GPIO1\"|1 (GPIO1), 9 (GPIO1). Give the",
       HasLine(9, {.name = "GPIO1"})},
      {shipped, sda + "is held by another program or driver: w1. End the program|" + kThenEnter,
       HasLine(17, {.name = "GPIO17", .consumer = "w1", .used = true})},
      {shipped, sda + "is in use, and the kernel does not say by whom",
       HasLine(17, {.name = "GPIO17", .used = true})},
      {shipped, "could not be taken (GPIO_V2_GET_LINEINFO_IOCTL: Invalid argument).",
       Fails("lineinfo", EINVAL)},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.file + " -> " + row.told);
    GpioRig rig(row.file);
    rig.kernel.failures["ioperm"] = EPERM;
    row.change(rig);
    FakePortSystem system(rig.kernel);
    const std::vector<PortNote> notes = GpioPorts(system, rig.folder);
    const auto note = std::find_if(notes.begin(), notes.end(), [](const PortNote& each) {
      return each.base == GpioRig::kBase;
    });
    ASSERT_NE(note, notes.end());
    EXPECT_EQ(rig.kernel.gpio.requested, "") << "a list requests no line";
    EXPECT_EQ(rig.kernel.gpio.OpenDescriptors(), 0U);

    rig.io->UsePort(kUse);
    EXPECT_EQ(rig.io->StillThere(), row.told.empty());
    EXPECT_THAT(rig.Calls(), testing::Not(HasSubstr("ioperm"))) << "no other way is tried";
    if (row.told.empty()) {
      EXPECT_THAT(rig.told, IsEmpty());
      EXPECT_EQ(note->problem, "");
      continue;
    }
    ASSERT_THAT(rig.told, ElementsAre(Tells(rig, row.told)));
    EXPECT_EQ(rig.told[0].find(note->problem + " " + kThenEnter), 0U) << note->problem;
    EXPECT_EQ(rig.kernel.gpio.requested, "") << "nothing half taken";
    EXPECT_EQ(rig.kernel.gpio.OpenDescriptors(), 0U);
  }
}

/// No list tells of these: only the kernel's answer to the request does, or to a later change.
TEST(GpioPort, AFaultIsToldOnceAndEndsTheUseOfThePort) {
  struct Row {
    bool inUse;
    std::string told;
    Change change;
  };
  const std::string noOutput = "Line 27 (GPIO27) of /dev/gpiochip0 cannot be an output (";
  const Row rows[] = {
      {false, "Line 17 (GPIO17) of /dev/gpiochip0 is held by another program or driver: gpioset.",
       HasLine(17, {.name = "GPIO17", .racer = "gpioset"})},
      {false,
       noOutput +
           "GPIO_V2_GET_LINE_IOCTL: Input/output error). Wire the target to another line, "
           "and name that one in the file. " +
           kThenEnter,
       HasLine(27, {.name = "GPIO27", .inputOnly = true})},
      {false, "could not be taken (GPIO_V2_GET_LINE_IOCTL: Cannot allocate memory). " + kThenEnter,
       Fails("request", ENOMEM)},
      {true,
       "/dev/gpiochip0 (port 0x6710) has gone: its card or adapter was pulled out|"
       "Bring the port back. " +
           kThenEnter.substr(0, kThenEnter.size() - 2),
       [](GpioRig& rig) { rig.kernel.gpio.chips[0].gone = true; }},
      {true,
       "Line 17 (GPIO17) of /dev/gpiochip0 cannot be an output (GPIO_V2_LINE_SET_CONFIG_IOCTL: "
       "Input/output error)|" +
           kThenEnter,
       [](GpioRig& rig) { rig.kernel.gpio.Line(17).inputOnly = true; }},
      {true,
       "/dev/gpiochip0 (port 0x6710) has failed (GPIO_V2_LINE_SET_CONFIG_IOCTL: Connection timed "
       "out)",
       Fails("config", ETIMEDOUT)},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.told);
    GpioRig rig;
    if (!row.inUse) row.change(rig);
    rig.io->UsePort(kUse);
    if (row.inUse) row.change(rig);
    rig.Calls();
    for (int i = 0; i < 2; ++i) {
      rig.io->DlPortWritePortUchar(GpioRig::kBase, 0x7E);
      EXPECT_EQ(rig.io->DlPortReadPortUchar(GpioRig::kBase + 1), std::nullopt);
      EXPECT_FALSE(rig.io->StillThere());
    }
    EXPECT_EQ(rig.Calls(), row.inUse ? "config:17=out0" : "");
    rig.io.reset();
    EXPECT_THAT(rig.told, ElementsAre(Tells(rig, row.told)));
    EXPECT_EQ(rig.kernel.gpio.OpenDescriptors(), 0U);
    EXPECT_TRUE(row.inUse || !rig.kernel.gpio.Line(27).output) << "taken, and an input again";
  }
}

TEST(GpioPort, AChipThatHasGoneIsToldWhereAnOperationBegins) {
  GpioRig rig;
  rig.io->UsePort(kUse);
  EXPECT_TRUE(rig.io->StillThere());
  rig.kernel.gpio.chips[0].gone = true;
  for (int i = 0; i < 2; ++i) EXPECT_FALSE(rig.io->StillThere());
  EXPECT_THAT(rig.told, ElementsAre(HasSubstr("has gone")));
  rig.kernel.gpio.chips[0].gone = false;
  rig.io->UsePort(kUse);
  EXPECT_TRUE(rig.io->StillThere());
}

TEST(GpioPort, BitsWithoutALineAreToldOnce) {
  struct Row {
    PortUse use;
    std::uint8_t data, control;
    std::string told;
  };
  const std::string device = "/dev/gpiochip0 (port 0x6710) was to ";
  const std::string carries = " and carries only the bits 0x";
  for (const Row& row : {Row{kUse, 0x7E, 0x00, ""},
                         {{GpioRig::kBase, 0x80, 0x7F, 0x04},
                          0x7E,
                          0x08,  // of two the first is told
                          "samples SDA by|status register|" + device + "read 0x80" + carries +
                              "40. |whose SDA in mask lies within 0x40."},
                         {kUse, 0x3F, 0x00,
                          "drives SDA by|data register|" + device + "write 0x3F" + carries +
                              "01.|SDA out mask lies within 0x01."},
                         {kUse, 0x7E, 0x08,
                          "drives SCL by|control register|" + device + "write 0x08" + carries +
                              "04.|SCL mask lies within 0x04."}}) {
    GpioRig rig;
    rig.io->UsePort(row.use);
    for (int i = 0; i < 2; ++i) {
      rig.io->DlPortWritePortUchar(GpioRig::kBase, row.data);
      rig.io->DlPortWritePortUchar(GpioRig::kBase + 2, row.control);
    }
    // A bit without a line never reads as an acknowledge, whatever the board's polarity.
    EXPECT_EQ(rig.io->DlPortReadPortUchar(GpioRig::kBase + 1).has_value(), row.use.sampled == 0x40);
    ASSERT_EQ(rig.told.size(), row.told.empty() ? 0U : 1U) << row.told;
    if (row.told.empty()) continue;
    EXPECT_THAT(rig.told[0], Tells(rig, row.told));
  }
}

TEST(GpioPort, OtherAddressesAreLeftToTheOtherWays) {
  struct Row {
    std::string file, told;
  };
  const std::string nowhere = "Row 1 of FILE cannot be read: field ";
  for (const bool there : {true, false}) {  // a parallel port at the address
    for (const Row& row :
         {Row{kPort + kRows, "no parallel port"},
          {kPort + "data,9\n", "no parallel port"},
          {"", "no parallel port"},
          {"address,0x378\ndata,9\n", nowhere + "2 is \"0x378\" and must be a hexadecimal address "
                                                "from 0 to FFFF"},
          {"address\n", nowhere + "2 is \"\""},
          {kRows, nowhere + "1 is \"data\" and must be address, before"},
          {"(a folder)",
           "FILE cannot be read (it is a folder, not a file), so that no GPIO port"}}) {
      SCOPED_TRACE(row.file);
      GpioRig rig(row.file);
      if (row.file == "(a folder)") {
        std::filesystem::remove(rig / "GpioPort.csv");
        std::filesystem::create_directory(rig / "GpioPort.csv");
      }
      if (there) rig.AddUsualPort();
      rig.kernel.failures["ioperm"] = EPERM;
      rig.io->UsePort({.base = 0x378});
      EXPECT_EQ(rig.io->StillThere(), there);
      EXPECT_EQ(rig.kernel.gpio.requested, "");
      ASSERT_EQ(rig.told.size(), there ? 0U : 1U);
      if (there) continue;
      EXPECT_THAT(rig.told[0], Tells(rig, row.told));
    }
  }
}

TEST(GpioPort, TheListHasThePortsOfTheFileAndThenTheChips) {
  GpioRig rig(kPort + kRows + "address,6720\ndata,0,power,3\ndata,1,header,3\naddress,x\n");
  HasChip("/dev/gpiochip1", "gpiochip1", "power")(rig);
  HasChip("/dev/gpiochip2", "gpiochip2", "secret", EACCES)(rig);
  FakePortSystem system(rig.kernel);
  std::vector<std::string> list;
  for (const PortNote& note : GpioPorts(system, rig.folder)) {
    list.push_back((note.base ? HexText(static_cast<std::int32_t>(*note.base)) : "-") + " " +
                   note.device + ": " + note.problem.substr(0, 8));
  }
  EXPECT_THAT(list,
              ElementsAre("6710 /dev/gpiochip0: ",
                          "6720 /dev/gpiochip1, "
                          "/dev/gpiochip0: ",
                          "- " + (rig / "GpioPort.csv").string() + ": Row 8 of",
                          "- /dev/gpiochip0 (header, 28 lines): ",
                          "- /dev/gpiochip1 (power, 4 lines): ", "- /dev/gpiochip2: No permi"));
}

}  // namespace
