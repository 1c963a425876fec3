#include "vsk/vsk_load.h"

#include <gmock/gmock.h>

#include <memory>

#include "support/temp_folder.h"
#include "support/transcript.h"
#include "text/hex_text.h"
#include "vsk/vsk_model.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using Lines = std::vector<std::string>;

const std::string kEnd = ":00000001FF\r\n";
const std::string kData = ":0300100001020300\r\n";
const std::string kRefusal = "message path or file name error!!!";

struct VskLoadTest : testing::Test {
  TempFolder folder;
  std::unique_ptr<tongxun::VskImages> images = std::make_unique<tongxun::VskImages>();
  Transcript view;
  Result<loadfile::ImageFacts> loaded = loadfile::ImageFacts{};  // what the last load returned

  std::string Path(const std::string& name) const { return PathText(folder / name); }
  /// Chooses the file of this name, a pair's when it ends in 00, and returns what was said.
  Lines Load(const std::string& name) {
    const VskModel& model =
        ModelOf(WithoutLastCharacter(name).ends_with("0") ? VskChip::Vsk630 : VskChip::Vsk830);
    loaded = model.load(name.empty() ? name : Path(name), model, *images, view);
    return view.Take();
  }
  Lines Load(const std::string& name, const std::string& bytes) {
    folder.Write(name, bytes);
    return Load(name);
  }
};

TEST_F(VskLoadTest, OneFileShowsTheChecks) {
  EXPECT_THAT(Load("img.Hex", kData + kEnd),
              ElementsAre("clear", "Text4 12", StartsWith("Text5 "), "Text3 6", "Text6 ",
                          "Text2 " + Path("img.Hex")));
  EXPECT_TRUE(images->CodeLoaded);
  EXPECT_THAT(Load("code.txt", "123456789"), testing::IsSupersetOf({"Text5 AEE7", "Text3 1DD"}));
  images->CodeCrc = 0xFFFF;
  EXPECT_FALSE(images->CrcMatches(-1)) << "never read from the chip";
  EXPECT_TRUE(images->CrcMatches(0xFFFF));
}

TEST_F(VskLoadTest, OneFileRefusedCancelledAndEmpty) {
  EXPECT_EQ(Load("").back(), "Text2 ");
  EXPECT_FALSE(images->CodeLoaded);
  images->CodeMax = 1;
  EXPECT_THAT(Load("img.hex", ""),
              ElementsAre("clear", "beep", "beep", kRefusal, "Text4 1", StartsWith("Text5 "),
                          "Text3 0", "Text6 ", "Text2 " + Path("img.hex")));
  EXPECT_TRUE(images->CodeLoaded) << "an empty HEX file leaves the image and shows its checks";
  EXPECT_THAT(Load("img.bin", ""), ElementsAre("clear", "Text4 FFFFFFFF", "Text5 FFFF", "Text3 0",
                                               "Text6 ", "Text2 " + Path("img.bin")));
}

TEST_F(VskLoadTest, APair) {
  folder.Write("img.b01", "89");
  images->CodeBuffer.fill(0x55);
  images->CodeBank0.fill(0x66);
  EXPECT_THAT(Load("img.b00", "1234567"),
              ElementsAre("clear", "Text4 6  1", "Text3 1DD", "Text5 AEE7", "Text6 ",
                          "Text2 " + Path("img.b00")));
  EXPECT_TRUE(images->CodeLoaded);
  for (const std::size_t a : {0U, 3U, 6U}) EXPECT_EQ(images->CodeBuffer[a], 0xFF) << a;
  EXPECT_EQ(images->CodeBuffer[8], 0x55);
  EXPECT_EQ(images->CodeBank0[6], '7');
  EXPECT_EQ(images->CodeBank0[7], 0x66) << "cells above the image stay";
  EXPECT_EQ(images->CodeBank1[0], '8');

  folder.Write("Img.h01", ":0100050077FF\r\n" + kEnd);
  EXPECT_THAT(Load("Img.h00", kData + kEnd), Contains("Text4 12  5"));
  EXPECT_EQ(images->CodeBank0[0x12], 3);
  EXPECT_EQ(images->CodeBank1[5], 0x77);

  EXPECT_THAT(Load("one.b00", "12345"), Contains("Text4 4  FFFFFFFF")) << "no second file";
  folder.Write("two.H01", "");
  EXPECT_THAT(Load("two.H00", kData + kEnd),
              ElementsAre("clear", "beep", "beep", kRefusal, "Text4 12  12", StartsWith("Text3 "),
                          StartsWith("Text5 "), "Text6 ", "Text2 " + Path("two.H00")));
  EXPECT_EQ(folder.Names().size(), 7U) << "none was created";
}

TEST_F(VskLoadTest, ThePairsSecondNameDiffersInTheLastCharacterOfUtf8) {
  folder.Write("x\xC3\xA9", "12");
  folder.Write("x1", "345");
  EXPECT_TRUE(
      Load_Vsk630_NormalFile(Path("x\xC3\xA9"), ModelOf(VskChip::Vsk630), *images, view).Ok());
  EXPECT_THAT(view.Take(), Contains("Text4 1  2"));
  EXPECT_EQ(images->BankFiles[1].name, Path("x1"));
}

TEST_F(VskLoadTest, OneBoxTellsTheNotesOfBothFilesOfAPair) {
  const std::string good = ":03001000010203E7\r\n";
  folder.Write("a.H01", kData);
  Load("a.H00", good);
  EXPECT_THAT(view.notes, HasSubstr("\n" + Path("a.H01") + "\n- 1 line with a wrong checksum"));
  EXPECT_THAT(view.notes, testing::Not(HasSubstr("a.H00")));
  folder.Write("a.H00", kData);
  view.notes.clear();
  folder.Write("a.H01", "x");
  Load("a.H00");
  EXPECT_EQ(view.notes, "") << "refused";
  folder.Write("a.H01", kData);
  Load("a.H00");
  EXPECT_THAT(view.notes, testing::ContainsRegex("a.H00\n- 1 line .*\n\n.*a.H01\n- 1 line "));
}

TEST_F(VskLoadTest, ARefusedFileRefusesThePairAndAMissingFirstFileWhateverItsKind) {
  images->CodeBuffer.fill(0x55);
  images->CodeMax = images->CodeBank0Max = 7;
  for (const char* good : {"first.H01", "second.H00", "missing.H00", "third.B00"})
    folder.Write(good, kData + kEnd);
  std::filesystem::create_directory(folder / "third.B01");
  for (const char* bad : {"first.H00", "second.H01", "bad.hex"}) folder.Write(bad, "abc");
  const std::pair<const char*, const char*> rows[] = {
      {"first.H00", "first.H00"},
      {"second.H00", "second.H01"},
      {"missing.H00", "missing.H01: the file does not exist"},
      {"third.B00", "it is a folder"},
      {"none.H00", "none.H00: the file does not exist"},
      {"none.B00", "not exist"},
      {"none.hex", "not exist"},
      {"none.bin", "not exist"},
      {"bad.hex", "line 1"}};
  for (const auto& [name, reason] : rows) {
    EXPECT_THAT(Load(name), ElementsAre("beep", "beep", kRefusal)) << name;
    EXPECT_THAT(view.lastDetail, HasSubstr(reason));
    EXPECT_EQ(loaded.Reason() + loaded.Cause(), "path or file name error!!!" + view.lastDetail);
    EXPECT_FALSE(images->CodeLoaded) << name;
    EXPECT_EQ(images->CodeMax + images->CodeBank0Max, 14) << name;
    EXPECT_EQ(images->CodeBuffer[0x10], 0x55) << name;
  }
  EXPECT_EQ(folder.Names().size(), 8U) << "none is created";
}

}  // namespace
