#include "platform/windows/dlport_io.h"

#include <gmock/gmock.h>
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

bool LibraryIsLoaded() { return GetModuleHandleA("dlportio.dll") != nullptr; }

/// While it lives, "dlportio.dll" is looked for in `folder` after the test program's own folder.
class SearchedFolder {
 public:
  explicit SearchedFolder(const fs::path& folder) {
    SetDllDirectoryW(fs::absolute(folder).make_preferred().c_str());
  }
  ~SearchedFolder() { SetDllDirectoryW(nullptr); }
  SearchedFolder(const SearchedFolder&) = delete;
  SearchedFolder& operator=(const SearchedFolder&) = delete;
};

/// Our own hold on a substitute library, to serve bytes and to see what reached it.
class Substitute {
 public:
  explicit Substitute(const std::string& name)
      : searched_(fs::path(SUBSTITUTES) / name), library_(LoadLibraryA("dlportio.dll")) {
    if (library_ == nullptr) throw std::runtime_error("the substitute is missing: " + name);
  }
  ~Substitute() { FreeLibrary(library_); }
  Substitute(const Substitute&) = delete;
  Substitute& operator=(const Substitute&) = delete;

  void Serve(std::uint8_t value) { Find<void(__stdcall*)(std::uint8_t)>("Serve")(value); }
  std::string TakeRecord() { return Find<const char*(__stdcall*)()>("TakeRecord")(); }

 private:
  template <typename Function>
  Function Find(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library_, name)));
  }

  SearchedFolder searched_;
  HMODULE library_;
};

struct Messages {
  std::vector<std::string> texts;
  Problem Tell() {
    return [this](const std::string& text) { texts.push_back(text); };
  }
};

TEST(DlPortIo, PassesEveryAccessUnchangedAndInOrder) {
  Substitute driver("complete");
  Messages messages;
  DlPortIo io(messages.Tell());

  driver.Serve(0xA5);
  io.DlPortWritePortUchar(0x37A, 0x00);
  io.DlPortWritePortUchar(0x378, 0x7F);
  EXPECT_EQ(io.DlPortReadPortUchar(0x379), 0xA5);
  io.DlPortWritePortUchar(0x378, 0x7F);
  EXPECT_EQ(driver.TakeRecord(), "37A=00 378=7F 379?A5 378=7F ");

  for (const std::uint32_t port : {0U, 0xEC00U, 0xFFFFU, 0x10000U, 0xFFFFFFFFU}) {
    io.DlPortWritePortUchar(port, 0xFF);
    io.DlPortReadPortUchar(port);
    char expected[32];
    std::snprintf(expected, sizeof expected, "%X=FF %X?A5 ", port, port);
    EXPECT_EQ(driver.TakeRecord(), expected);
  }
  EXPECT_THAT(messages.texts, IsEmpty());
}

TEST(DlPortIo, CarriesEveryByteValueBothWays) {
  Substitute driver("complete");
  DlPortIo io([](const std::string& text) { ADD_FAILURE() << text; });
  for (unsigned i = 0; i < 256; ++i) {
    const auto value = static_cast<std::uint8_t>(i);
    driver.Serve(value);
    io.DlPortWritePortUchar(0x378, value);
    EXPECT_EQ(io.DlPortReadPortUchar(0x379), value);
    char expected[32];
    std::snprintf(expected, sizeof expected, "378=%02X 379?%02X ", i, i);
    EXPECT_EQ(driver.TakeRecord(), expected);
  }
}

TEST(DlPortIo, HoldsTheLibraryFromTheFirstAccessUntilTheEnd) {
  const SearchedFolder searched(fs::path(SUBSTITUTES) / "complete");
  {
    const auto io = SystemParallelPort([](const std::string& text) { ADD_FAILURE() << text; });
    io->UsePort(0x378);
    EXPECT_FALSE(LibraryIsLoaded());
    io->DlPortWritePortUchar(0x378, 1);
    EXPECT_TRUE(LibraryIsLoaded());
  }
  EXPECT_FALSE(LibraryIsLoaded());
}

/// Whichever access comes first, the operator is told once and there is no port.
void ExpectNoPort(const std::string& reason) {
  SCOPED_TRACE(reason);
  for (const bool readFirst : {false, true}) {
    Messages messages;
    DlPortIo io(messages.Tell());
    EXPECT_THAT(messages.texts, IsEmpty());
    if (readFirst) {
      EXPECT_EQ(io.DlPortReadPortUchar(0x379), std::nullopt);
    }
    io.DlPortWritePortUchar(0x378, 0x7F);
    EXPECT_EQ(io.DlPortReadPortUchar(0x379), std::nullopt);
    io.DlPortWritePortUchar(0x37A, 0x00);
    EXPECT_THAT(messages.texts, ElementsAre(AllOf(HasSubstr("dlportio.dll"), HasSubstr(reason))));
  }
}

TEST(DlPortIo, WithoutAUsableLibraryThereIsNoPort) {
  const TempFolder folder;
  const SearchedFolder searched(folder.Path());
  ExpectNoPort("was not found");

  folder.Write("dlportio.dll", "this is no library");
  ExpectNoPort("is not a 64-bit library");
  EXPECT_FALSE(LibraryIsLoaded());
}

TEST(DlPortIo, LooksForTheLibraryAgainWhenThePortIsUsedAnew) {
  const TempFolder folder;
  Messages messages;
  DlPortIo io(messages.Tell());
  {
    const SearchedFolder searched(folder.Path());
    io.DlPortWritePortUchar(0x378, 0x7F);
  }
  Substitute driver("complete");
  driver.TakeRecord();
  io.DlPortWritePortUchar(0x378, 0x7E);
  EXPECT_EQ(driver.TakeRecord(), "");
  io.UsePort(0x378);
  io.DlPortWritePortUchar(0x378, 0x7D);
  EXPECT_EQ(driver.TakeRecord(), "378=7D ");
  EXPECT_EQ(messages.texts.size(), 1U);
}

TEST(DlPortIo, UsesNoLibraryThatLacksAnEntryPoint) {
  struct Row {
    const char* substitute;
    const char* missing;
  };
  for (const Row& row : {Row{"without_write", "has no entry point DlPortWritePortUchar"},
                         Row{"without_read", "has no entry point DlPortReadPortUchar"}}) {
    {
      Substitute driver(row.substitute);
      ExpectNoPort(row.missing);
      EXPECT_EQ(driver.TakeRecord(), "");
    }
    EXPECT_FALSE(LibraryIsLoaded()) << "a hold on the library was left behind";
  }
}

TEST(DlPortIo, AnAccessFromWithinTheMessageFindsNoPortEither) {
  const TempFolder folder;
  const SearchedFolder searched(folder.Path());
  int told = 0;
  PortIo* again = nullptr;
  DlPortIo io([&](const std::string&) {
    ++told;
    EXPECT_EQ(again->DlPortReadPortUchar(0x379), std::nullopt);
  });
  again = &io;
  EXPECT_EQ(io.DlPortReadPortUchar(0x379), std::nullopt);
  EXPECT_EQ(told, 1);
}

}  // namespace
