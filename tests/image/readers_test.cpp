#include "image/readers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "text/hex_text.h"
#include "vsk/vsk_load.h"
#include "support/temp_folder.h"
#include "support/transcript.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using tongxun::CodeBuffers;

const std::string kEnd = ":00000001FF\r\n";
const std::string kData = ":0300100001020300\r\n";

struct ReadersTest : testing::Test {
  TempFolder folder;
  std::unique_ptr<CodeBuffers> b = std::make_unique<CodeBuffers>();
  Transcript view;

  bool Hex(const std::string& text) {
    return loadfile::ReadHexFile(folder.Write("f.hex", text), *b, view);
  }
};

TEST_F(ReadersTest, BinaryFiles) {
  b->CodeBuffer.fill(0x55);
  EXPECT_TRUE(loadfile::ReadBinFile(folder.Write("a", "\1\2\3"), *b, view));
  EXPECT_EQ(b->CodeMax, 2);
  EXPECT_EQ(b->CodeBuffer[2], 3);
  EXPECT_EQ(b->CodeBuffer[3], 0xFF);
  EXPECT_EQ(b->CodeBuffer[4], 0x55) << "cells above the image stay";

  for (const std::size_t size : {65535U, 65536U, 70000U}) {
    b->CodeBuffer[65535] = b->CodeBuffer[65536] = 0x55;
    EXPECT_TRUE(loadfile::ReadBinFile(folder.Write("a", std::string(size, 'x')), *b, view));
    EXPECT_EQ(b->CodeMax, std::min<std::int32_t>(static_cast<std::int32_t>(size), 65536) - 1);
    EXPECT_EQ(b->CodeBuffer[65535], size == 65535 ? 0xFF : 'x');
    EXPECT_EQ(b->CodeBuffer[65536], 0x55);
  }
  EXPECT_TRUE(loadfile::ReadBinFile((folder / "none").string(), *b, view));
  EXPECT_EQ(b->CodeMax, -1);
  EXPECT_EQ(b->CodeBuffer[0], 0xFF);
  EXPECT_FALSE(std::filesystem::exists(folder / "none"));
  EXPECT_FALSE(loadfile::ReadBinFile(folder.Path().string(), *b, view));
}

TEST_F(ReadersTest, HexRecordsLandAtTheirAddresses) {
  b->CodeBuffer.fill(0x55);
  EXPECT_TRUE(Hex(kData + kEnd));
  EXPECT_EQ(b->CodeMax, 0x12);
  EXPECT_EQ(b->CodeBuffer[0x0F], 0x55);
  EXPECT_EQ(b->CodeBuffer[0x12], 3);

  EXPECT_TRUE(Hex(":020000040000FA\r\n" + kEnd)) << "every record is a data record";
  EXPECT_EQ(b->CodeMax, 1);
  EXPECT_EQ(b->CodeBuffer[0], 0);

  EXPECT_TRUE(Hex(kEnd)) << "only the end-of-file record";
  EXPECT_EQ(b->CodeMax, 0);

  EXPECT_TRUE(Hex(":02FFFF001234FF\r\n" + kEnd)) << "up to the last cell";
  EXPECT_EQ(b->CodeMax, 65536);
  EXPECT_EQ(b->CodeBuffer[65536], 0x34);
  EXPECT_TRUE(view.Take().empty());
}

TEST_F(ReadersTest, AWrongStartCodeIsSaidOncePerRecord) {
  EXPECT_TRUE(Hex(";" + kData.substr(1) + kData + "x" + kData.substr(1) + kEnd));
  EXPECT_THAT(view.Take(), ElementsAre("print error!!!", "print error!!!"));
  EXPECT_EQ(b->CodeBuffer[0x12], 3);
}

TEST_F(ReadersTest, WhatCannotBeReadChangesNothingAndSaysWhy) {
  struct Case {
    const char* what;
    std::string text;
    const char* reason;
  };
  const Case cases[] = {
      {"lower case", kData + ":03001000ab0203EE\r\n" + kEnd,
       "line 2, column 10: found \"a\", expected a digit 0-9 or A-F (upper case)"},
      {"no digit in the address", ":03 01000010203EA\r\n" + kEnd, "line 1, column 4: found \" \""},
      {"LF only", ":0300100001020300\n" + kEnd, "unix2dos"},
      {"one record, LF only", ":0300100001020300\n", "unix2dos"},
      {"CR only", ":0300100001020300\r:00000001FF\r", "line 1, column 19"},
      {"cut in the data", ":0300100001", "the file ends inside a record"},
      {"no line end", kData + ":0300100001020300", "line 2, column 18"},
      {"beyond the last cell", ":03FFFF00010203FF\r\n" + kEnd, "reaches address 0x10001"},
      {"binary", std::string(40, '\0'), "the character 0x00"},
      {"one character", ":", "the file ends inside a record"},
  };
  b->CodeBuffer.fill(0x55);
  b->CodeMax = 7;
  for (const Case& c : cases) {
    EXPECT_FALSE(Hex(c.text)) << c.what;
    EXPECT_THAT(view.Take(), ElementsAre("beep", "beep", "message path or file name error!!!"));
    EXPECT_THAT(view.lastDetail, HasSubstr(c.reason)) << c.what;
    EXPECT_EQ(b->CodeMax, 7);
    EXPECT_EQ(std::count(b->CodeBuffer.begin(), b->CodeBuffer.end(), 0x55), 65537) << c.what;
  }
  EXPECT_FALSE(loadfile::ReadHexFile((folder / "none").string(), *b, view));
  EXPECT_THAT(view.lastDetail, HasSubstr("the file does not exist"));
  EXPECT_FALSE(loadfile::ReadHexFile(folder.Path().string(), *b, view));
  EXPECT_THAT(view.lastDetail, HasSubstr("folder"));
}

TEST_F(ReadersTest, TheRtdReadersFillTheirOwnBuffer) {
  EXPECT_TRUE(loadfile::ReadRtdHexFile(folder.Write("f", ":06FFFF00010203040506FF\r\n"), *b, view));
  EXPECT_EQ(b->RtdLoadMax, 65540);
  EXPECT_EQ(b->RtdLoadBuffer[65540], 6);
  EXPECT_TRUE(loadfile::ReadRtdBinFile(folder.Write("f", "ab"), *b, view));
  EXPECT_EQ(b->RtdLoadMax, 1);
  EXPECT_EQ(b->CodeMax, 0);
}

TEST_F(ReadersTest, LoadVsk830ShowsTheChecks) {
  view.file = folder.Write("img.Hex", kData + kEnd);
  Load_Vsk830_NormalFile(*b, view);
  EXPECT_TRUE(b->CodeLoaded);
  EXPECT_THAT(view.Take(), ElementsAre("choose Hexfile (*.hex)|*.hex|Binfile (*.bin)|*.bin",
                                       "Text4 12", "Text5 " + HexText(b->CodeCrc), "Text3 6",
                                       "Text6 ", "Text2 " + view.file));
  for (const char* name : {"x.bin", "code", "code.txt"}) {
    view.file = folder.Write(name, "123456789");
    Load_Vsk830_NormalFile(*b, view);
    EXPECT_THAT(view.Take(), testing::Contains("Text5 AEE7")) << name;
  }
}

TEST_F(ReadersTest, LoadVsk830RefusedCancelledAndEmpty) {
  view.file = folder.Write("img.hex", ":zz");
  Load_Vsk830_NormalFile(*b, view);
  EXPECT_FALSE(b->CodeLoaded);
  EXPECT_EQ(view.Take().back(), "message path or file name error!!!") << "no box changes";

  view.file.clear();
  Load_Vsk830_NormalFile(*b, view);
  EXPECT_EQ(view.Take().back(), "Text2 ");
  EXPECT_FALSE(b->CodeLoaded);

  b->CodeMax = 1;
  view.file = folder.Write("img.hex", "");
  Load_Vsk830_NormalFile(*b, view);
  EXPECT_TRUE(b->CodeLoaded) << "an empty HEX file leaves the image and shows its checks";
  EXPECT_THAT(
      view.Take(),
      ElementsAre(HasSubstr("choose"), "beep", "beep", "message path or file name error!!!",
                  "Text4 1", HasSubstr("Text5 "), "Text3 0", "Text6 ", "Text2 " + view.file));

  view.file = folder.Write("img.bin", "");
  Load_Vsk830_NormalFile(*b, view);
  EXPECT_THAT(view.Take(), ElementsAre(HasSubstr("choose"), "Text4 FFFFFFFF", "Text5 FFFF",
                                       "Text3 0", "Text6 ", "Text2 " + view.file));
}

TEST_F(ReadersTest, LoadVsk630TakesThePair) {
  view.file = folder.Write("img.b00", "1234567");
  folder.Write("img.b01", "89");
  b->CodeBuffer.fill(0x55);
  b->CodeBank0.fill(0x66);
  Load_Vsk630_NormalFile(*b, view);
  EXPECT_THAT(view.Take(),
              ElementsAre("choose H00file (*.H00)|*.H00|B00file (*.B00)|*.B00", "Text4 6  1",
                          "Text3 1DD", "Text5 AEE7", "Text6 ", "Text2 " + view.file));
  EXPECT_TRUE(b->CodeLoaded);
  for (const std::size_t a : {0U, 3U, 6U}) EXPECT_EQ(b->CodeBuffer[a], 0xFF) << a;
  EXPECT_EQ(b->CodeBuffer[8], 0x55);
  EXPECT_EQ(b->CodeBank0[6], '7');
  EXPECT_EQ(b->CodeBank0[7], 0x66) << "cells above the image stay";
  EXPECT_EQ(b->CodeBank1[0], '8');

  view.file = folder.Write("Img.h00", kData + kEnd);
  folder.Write("Img.h01", ":0100050077FF\r\n" + kEnd);
  Load_Vsk630_NormalFile(*b, view);
  EXPECT_THAT(folder.Names(),
              testing::UnorderedElementsAre("img.b00", "img.b01", "Img.h00", "Img.h01"));
  EXPECT_EQ(b->CodeBank0Max, 0x12);
  EXPECT_EQ(b->CodeBank0[0x12], 3);
  EXPECT_EQ(b->CodeBank1Max, 5);
  EXPECT_EQ(b->CodeBank1[5], 0x77);
}

TEST_F(ReadersTest, LoadVsk630MissingAndEmptySecondFile) {
  view.file = folder.Write("img.b00", "12345");
  Load_Vsk630_NormalFile(*b, view);
  EXPECT_THAT(view.Take(), testing::Contains("Text4 4  FFFFFFFF"));
  EXPECT_FALSE(std::filesystem::exists(folder / "img.b01"));

  view.file = folder.Write("img.H00", kData + kEnd);
  folder.Write("img.H01", "");
  Load_Vsk630_NormalFile(*b, view);
  EXPECT_THAT(view.Take(),
              ElementsAre(HasSubstr("choose"), "beep", "beep", "message path or file name error!!!",
                          "Text4 12  12", HasSubstr("Text3 "), HasSubstr("Text5 "), "Text6 ",
                          "Text2 " + view.file));
}

TEST_F(ReadersTest, ARefusedFileRefusesThePair) {
  b->CodeBuffer.fill(0x55);
  b->CodeBank0Max = b->CodeBank1Max = 7;
  view.file = folder.Write("img.H00", kData + kEnd);
  folder.Write("img.H01", kData + kEnd);
  folder.Write("img.H00", "abc");
  Load_Vsk630_NormalFile(*b, view);
  EXPECT_EQ(view.Take().back(), "message path or file name error!!!") << "the bank-0 file";
  EXPECT_EQ(b->CodeBuffer[0x10], 0x55);
  folder.Write("img.H00", kData + kEnd);
  std::filesystem::remove(folder / "img.H01");
  for (const char* second : {"", "abc"}) {
    if (*second != '\0') folder.Write("img.H01", second);
    Load_Vsk630_NormalFile(*b, view);
    EXPECT_THAT(view.Take(), ElementsAre(HasSubstr("choose"), "beep", "beep",
                                         "message path or file name error!!!"));
    EXPECT_THAT(view.lastDetail, HasSubstr("img.H01"));
    EXPECT_EQ(b->CodeBank0Max, 7);
    EXPECT_EQ(b->CodeBuffer[0x10], 0x55);
    EXPECT_FALSE(b->CodeLoaded);
  }
  view.file.clear();
  Load_Vsk630_NormalFile(*b, view);
  EXPECT_EQ(view.Take().back(), "Text2 ");
}

}  // namespace
