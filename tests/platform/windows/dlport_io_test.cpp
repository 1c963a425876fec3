#include <gmock/gmock.h>
#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/port_io.h"
#include "support/temp_folder.h"

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

/// From now on "dlportio.dll" is looked for in `folder` after the test program's own folder.
void SearchIn(const fs::path& folder) {
  SetDllDirectoryW(fs::absolute(folder).make_preferred().c_str());
}
fs::path Substitute(const char* name) { return fs::path(SUBSTITUTES) / name; }

HMODULE LoadedLibrary() { return GetModuleHandleA("dlportio.dll"); }

/// A function of the loaded substitute.
template <typename Function>
Function* Find(const char* name) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void*>(GetProcAddress(LoadedLibrary(), name)));
}
void Serve(std::uint8_t value) { Find<void __stdcall(std::uint8_t)>("Serve")(value); }
/// What has reached the library since the last call.
std::string Calls() {
  if (LoadedLibrary() == nullptr) return "no library is loaded";
  return Find<const char* __stdcall()>("TakeRecord")();
}

struct DlPortIoTest : testing::Test {
  std::vector<std::string> told;
  std::unique_ptr<PortIo> io = SystemParallelPort({}, [this](const std::string& text) {
    told.push_back(text);
    EXPECT_EQ(io->DlPortReadPortUchar(0x379), std::nullopt) << "an access from within the message";
  });

  ~DlPortIoTest() override { SetDllDirectoryW(nullptr); }
};

TEST_F(DlPortIoTest, EveryAccessReachesTheLibraryUnchangedAndInOrder) {
  SearchIn(Substitute("complete"));
  io->UsePort({.base = 0x378});
  EXPECT_EQ(Calls(), "no library is loaded") << "it is held from the first access";
  for (int i = 0; i < 2; ++i) io->DlPortWritePortUchar(0x37A, 0x7F);
  EXPECT_EQ(io->DlPortReadPortUchar(0x379), 0x00);
  EXPECT_EQ(Calls(), "37A=7F 37A=7F 379?00 ");

  Serve(0xA5);
  for (const std::uint32_t port : {0U, 0xD000U, 0x80000000U, 0xFFFFFFFFU}) {
    io->DlPortWritePortUchar(port, 0x80);
    EXPECT_EQ(io->DlPortReadPortUchar(port), 0xA5);
  }
  EXPECT_EQ(Calls(), "0=80 0?A5 D000=80 D000?A5 80000000=80 80000000?A5 FFFFFFFF=80 FFFFFFFF?A5 ");
  io.reset();
  EXPECT_EQ(Calls(), "no library is loaded");
  EXPECT_THAT(told, ElementsAre());
}

TEST_F(DlPortIoTest, WithoutAUsableLibraryThereIsNoPortUntilItIsUsedAnew) {
  struct Row {
    fs::path folder;
    const char* told;
  };
  const TempFolder folder;
  folder.Write("damaged/dlportio.dll", "this is no library");
  for (const auto& [searched, reason] :
       {Row{folder.Path(), "was not found"}, Row{folder / "damaged", "is not a 64-bit library"},
        Row{Substitute("without_write"), "has no entry point DlPortWritePortUchar"},
        Row{Substitute("without_read"), "has no entry point DlPortReadPortUchar"}}) {
    for (const bool readFirst : {false, true}) {
      SearchIn(searched);
      io->UsePort({.base = 0x378});
      if (!readFirst) io->DlPortWritePortUchar(0x378, 0x7F);
      EXPECT_EQ(io->DlPortReadPortUchar(0x379), std::nullopt);
      SearchIn(Substitute("complete"));
      io->DlPortWritePortUchar(0x37A, 0x00);
      EXPECT_EQ(io->DlPortReadPortUchar(0x379), std::nullopt);
      EXPECT_EQ(Calls(), "no library is loaded") << reason;
      EXPECT_THAT(told, ElementsAre(AllOf(HasSubstr("dlportio.dll"), HasSubstr(reason))));
      told.clear();
    }
  }
  SearchIn(folder.Path());
  EXPECT_THAT(SystemPorts({}, 0x378).at(0).problem, HasSubstr("was not found"));
  SearchIn(Substitute("complete"));
  EXPECT_EQ(SystemPorts({}, 0x378).at(0).problem, "");
  EXPECT_EQ(Calls(), "no library is loaded");
  io->UsePort({.base = 0x378});
  io->DlPortWritePortUchar(0x378, 0x7D);
  EXPECT_EQ(Calls(), "378=7D ");
  EXPECT_THAT(told, ElementsAre());
}

}  // namespace
