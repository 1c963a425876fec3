#include "vsk/vsk_load.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "image/readers.h"
#include "support/temp_folder.h"
#include "support/transcript.h"
#include "text/hex_text.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string kEnd = ":00000001FF\r\n";
const std::string kData = ":0300100001020300\r\n";
constexpr std::int32_t kLastCell = 65536;

struct VskLoadTest : testing::Test {
  TempFolder folder;
  std::unique_ptr<tongxun::VskImages> b = std::make_unique<tongxun::VskImages>();
  Transcript view;
};

TEST_F(VskLoadTest, TheChecksOverTheImages) {
  const std::string_view digits = "123456789";
  std::copy(digits.begin(), digits.end(), b->CodeBuffer.begin());
  b->CodeMax = 8;
  b->CheckCode();
  EXPECT_EQ(b->CodeCrc, 0xAEE7);
  EXPECT_EQ(b->CodeSum, 0x01DD);
  b->CodeCrc = 0xFFFF;
  EXPECT_FALSE(b->CrcMatches(-1)) << "never read from the chip";
  EXPECT_TRUE(b->CrcMatches(0xFFFF));
}

TEST_F(VskLoadTest, LoadVsk830ShowsTheChecks) {
  view.file = folder.Write("img.Hex", kData + kEnd);
  Load_Vsk830_NormalFile(kLastCell, *b, view);
  EXPECT_TRUE(b->CodeLoaded);
  EXPECT_THAT(view.Take(), ElementsAre("choose Hexfile (*.hex)|*.hex|Binfile (*.bin)|*.bin",
                                       "clear", "Text4 12", "Text5 " + HexText(b->CodeCrc),
                                       "Text3 6", "Text6 ", "Text2 " + view.file));
  for (const char* name : {"x.bin", "code", "code.txt"}) {
    view.file = folder.Write(name, "123456789");
    Load_Vsk830_NormalFile(kLastCell, *b, view);
    EXPECT_THAT(view.Take(), testing::Contains("Text5 AEE7")) << name;
  }
}

TEST_F(VskLoadTest, LoadVsk830RefusedCancelledAndEmpty) {
  view.file = folder.Write("img.hex", ":zz");
  Load_Vsk830_NormalFile(kLastCell, *b, view);
  EXPECT_FALSE(b->CodeLoaded);
  EXPECT_EQ(view.Take().back(), "message path or file name error!!!") << "no box changes";

  view.file.clear();
  Load_Vsk830_NormalFile(kLastCell, *b, view);
  EXPECT_EQ(view.Take().back(), "Text2 ");
  EXPECT_FALSE(b->CodeLoaded);

  b->CodeMax = 1;
  view.file = folder.Write("img.hex", "");
  Load_Vsk830_NormalFile(kLastCell, *b, view);
  EXPECT_TRUE(b->CodeLoaded) << "an empty HEX file leaves the image and shows its checks";
  EXPECT_THAT(view.Take(),
              ElementsAre(HasSubstr("choose"), "clear", "beep", "beep",
                          "message path or file name error!!!", "Text4 1", HasSubstr("Text5 "),
                          "Text3 0", "Text6 ", "Text2 " + view.file));

  view.file = folder.Write("img.bin", "");
  Load_Vsk830_NormalFile(kLastCell, *b, view);
  EXPECT_THAT(view.Take(), ElementsAre(HasSubstr("choose"), "clear", "Text4 FFFFFFFF", "Text5 FFFF",
                                       "Text3 0", "Text6 ", "Text2 " + view.file));
}

TEST_F(VskLoadTest, LoadVsk630TakesThePair) {
  view.file = folder.Write("img.b00", "1234567");
  folder.Write("img.b01", "89");
  b->CodeBuffer.fill(0x55);
  b->CodeBank0.fill(0x66);
  Load_Vsk630_NormalFile(kLastCell, *b, view);
  EXPECT_THAT(view.Take(),
              ElementsAre("choose H00file (*.H00)|*.H00|B00file (*.B00)|*.B00", "clear",
                          "Text4 6  1", "Text3 1DD", "Text5 AEE7", "Text6 ", "Text2 " + view.file));
  EXPECT_TRUE(b->CodeLoaded);
  for (const std::size_t a : {0U, 3U, 6U}) EXPECT_EQ(b->CodeBuffer[a], 0xFF) << a;
  EXPECT_EQ(b->CodeBuffer[8], 0x55);
  EXPECT_EQ(b->CodeBank0[6], '7');
  EXPECT_EQ(b->CodeBank0[7], 0x66) << "cells above the image stay";
  EXPECT_EQ(b->CodeBank1[0], '8');

  view.file = folder.Write("Img.h00", kData + kEnd);
  folder.Write("Img.h01", ":0100050077FF\r\n" + kEnd);
  Load_Vsk630_NormalFile(kLastCell, *b, view);
  EXPECT_THAT(folder.Names(),
              testing::UnorderedElementsAre("img.b00", "img.b01", "Img.h00", "Img.h01"));
  EXPECT_EQ(b->CodeBank0Max, 0x12);
  EXPECT_EQ(b->CodeBank0[0x12], 3);
  EXPECT_EQ(b->CodeBank1Max, 5);
  EXPECT_EQ(b->CodeBank1[5], 0x77);
}

TEST_F(VskLoadTest, LoadVsk630MissingAndEmptySecondFile) {
  view.file = folder.Write("img.b00", "12345");
  Load_Vsk630_NormalFile(kLastCell, *b, view);
  EXPECT_THAT(view.Take(), testing::Contains("Text4 4  FFFFFFFF"));
  EXPECT_FALSE(std::filesystem::exists(folder / "img.b01"));

  view.file = folder.Write("img.H00", kData + kEnd);
  folder.Write("img.H01", "");
  Load_Vsk630_NormalFile(kLastCell, *b, view);
  EXPECT_THAT(view.Take(),
              ElementsAre(HasSubstr("choose"), "clear", "beep", "beep",
                          "message path or file name error!!!", "Text4 12  12", HasSubstr("Text3 "),
                          HasSubstr("Text5 "), "Text6 ", "Text2 " + view.file));
}

TEST_F(VskLoadTest, AMissingOnlyOrFirstFileIsRefusedWhateverItsKind) {
  b->CodeMax = b->CodeBank0Max = 7;
  for (const char* name : {"none.hex", "none.bin", "none.H00", "none.B00"}) {
    view.file = (folder / name).string();
    const bool pair = view.file.ends_with("00");
    (pair ? Load_Vsk630_NormalFile : Load_Vsk830_NormalFile)(kLastCell, *b, view);
    EXPECT_THAT(view.Take(), ElementsAre(HasSubstr("choose"), "beep", "beep",
                                         "message path or file name error!!!"));
    EXPECT_THAT(view.lastDetail, HasSubstr("the file does not exist"));
    EXPECT_FALSE(b->CodeLoaded);
    EXPECT_EQ(b->CodeMax + b->CodeBank0Max, 14);
    EXPECT_FALSE(std::filesystem::exists(view.file));
  }
}

TEST_F(VskLoadTest, AModelsLastCellIsTheLastThatIsFilled) {
  b->CodeBuffer.fill(0x55);
  EXPECT_FALSE(loadfile::ReadHexFile(folder.Write("f", ":01800000010200\r\n"), 0x7FFF, *b, view));
  EXPECT_THAT(view.lastDetail, HasSubstr("expected none above 0x7FFF"));
  EXPECT_TRUE(loadfile::ReadBinFile(folder.Write("f", std::string(0x9000, 'x')), 0x7FFF, *b, view));
  EXPECT_EQ(b->CodeMax, 0x7FFF);
  EXPECT_EQ(b->CodeBuffer[0x8000], 0x55);
}

TEST_F(VskLoadTest, ARefusedFileRefusesThePair) {
  b->CodeBuffer.fill(0x55);
  b->CodeBank0Max = b->CodeBank1Max = 7;
  view.file = folder.Write("img.H00", kData + kEnd);
  folder.Write("img.H01", kData + kEnd);
  folder.Write("img.H00", "abc");
  Load_Vsk630_NormalFile(kLastCell, *b, view);
  EXPECT_EQ(view.Take().back(), "message path or file name error!!!") << "the bank-0 file";
  EXPECT_EQ(b->CodeBuffer[0x10], 0x55);
  folder.Write("img.H00", kData + kEnd);
  std::filesystem::remove(folder / "img.H01");
  for (const char* second : {"", "abc"}) {
    if (*second != '\0') folder.Write("img.H01", second);
    Load_Vsk630_NormalFile(kLastCell, *b, view);
    EXPECT_THAT(view.Take(), ElementsAre(HasSubstr("choose"), "beep", "beep",
                                         "message path or file name error!!!"));
    EXPECT_THAT(view.lastDetail, HasSubstr("img.H01"));
    EXPECT_EQ(b->CodeBank0Max, 7);
    EXPECT_EQ(b->CodeBuffer[0x10], 0x55);
    EXPECT_FALSE(b->CodeLoaded);
  }
  view.file.clear();
  Load_Vsk630_NormalFile(kLastCell, *b, view);
  EXPECT_EQ(view.Take().back(), "Text2 ");
}

}  // namespace
