// Whole operations on the simulated VSK chips: the frames on the wire, and the transcript of what
// the window showed.
#include <gmock/gmock.h>

#include "support/images.h"
#include "support/vsk_rig.h"

namespace {

using simulator::ConnectedChip;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using Lines = std::vector<std::string>;

Lines operator+(Lines lines, const Lines& more) {
  lines.insert(lines.end(), more.begin(), more.end());
  return lines;
}

/// How the transcript begins when an operation says whether it may go on, and what follows.
template <typename... More>
Lines Begins(const std::string& text, const More&... more) {
  return {"Label2: ", "Label3: ", "Label2: " + text, more...};
}

struct Session : VskRig {
  using VskRig::VskRig;

  Lines Enter() {
    EnterIspMode();
    return TakeFrames();
  }
  /// Programs what is loaded; the chip refuses a byte of one frame.
  Lines Program(std::uint64_t refusedFrame = 0, std::size_t byte = 2) {
    InIspMode();
    auto& refused = board.faults.refusedByte;
    refused.reset();
    if (refusedFrame > 0) refused = {board.wire.FramesSeen() + refusedFrame, byte};
    isp.DoProgram(view);
    return TakeFrames();
  }
  std::string CrcFrame() const {
    const std::uint16_t crc = images.CodeCrc;
    return "S 97 [00] [00] [00] [" + fileop::HexByte(crc >> 8) + "] [" +
           fileop::HexByte(crc & 0xFF) + "]- P";
  }
};

struct Vsk830Test : testing::Test, Session {
  std::int32_t page = 0;  // asked for
};

TEST_F(Vsk830Test, EnteringAndQuittingAsTheWindowShowsThem) {
  EXPECT_THAT(Enter(), ElementsAre("S 5A A5 P"));
  EXPECT_EQ(view.Take(), Begins("isp mode is exist"));
  EXPECT_THAT(Enter(), IsEmpty());
  EXPECT_EQ(view.Take(), Begins("isp mode is already exist"));

  EXPECT_FALSE(isp.QuitIspMode(view));
  EXPECT_THAT(TakeFrames(), ElementsAre("S 96 48 00- P", "S 96- P"))
      << "selecting the quit option sends the frame once more";
  const Lines out{"Label2: isp mode is out", "select Option5"};
  EXPECT_EQ(view.Take(), out + Begins("isp mode is out", "select Option5"));
  EXPECT_FALSE(board.vsk830.InIspMode());

  InIspMode();
  board.faults.sdaStuckLow = true;
  view.quitSelected = true;
  EXPECT_TRUE(isp.QuitIspMode(view));
  EXPECT_THAT(view.Take(), ElementsAre("Label2 red: isp mode is not out", "deselect Option5"));
  EXPECT_TRUE(isp.IspModeOn);
}

TEST_F(Vsk830Test, EntryByNumberOfCodes) {
  using Codes = std::vector<std::uint8_t>;
  const std::tuple<Codes, int, const char*> rows[] = {
      {{0x5B}, 1, "S 5A P"},
      {{0x10, 0x20, 0x31}, 3, "S 10 20 31 P"},
      {{1, 2, 3, 4, 5, 6, 7, 8, 9}, 200, "S 00 02 03 04 05 06 07 08 09 P"},
      {{1}, 0, "S P"}};
  for (const auto& [codes, count, frame] : rows) {
    Session other(ConnectedChip::Vsk830, Wiring(), {.address = 0x94, .codes = codes});
    other.frames.IspParams[1] = static_cast<std::int16_t>(count);
    EXPECT_THAT(other.Enter(), ElementsAre(frame));
    EXPECT_EQ(other.board.vsk830.InIspMode(), count > 0) << frame;
    EXPECT_TRUE(other.isp.IspModeOn) << "without a code nothing could be refused";
  }
  frames.IspParams[3] = 0xA4;
  EXPECT_THAT(Enter(), ElementsAre("S 5A A4- P"));
  EXPECT_EQ(view.Take().back(), "Label2 red: isp mode is no exist");
  EXPECT_FALSE(isp.IspModeOn);
}

TEST_F(Vsk830Test, EveryOperationIsRefusedOutsideIspMode) {
  using Operation = std::function<void(IspOperations&, IspView&)>;
  const auto pageRead = [this](IspOperations&, IspView& to) { isp.DoPageRead(page, to); };
  const std::pair<Operation, const char*> rows[] = {{&IspOperations::DoEraseAll, "blankentire"},
                                                    {&IspOperations::DoPageErase, "page erase"},
                                                    {pageRead, "read_code"},
                                                    {&IspOperations::DoProgram, "program"}};
  for (const auto& [operation, text] : rows) {
    operation(isp, view);
    const std::string refusal = text + std::string(":isp mode is not exist");
    EXPECT_EQ(view.modeText, refusal);
    EXPECT_EQ(view.Take()[2], "Label2 red: " + refusal) << "behind two empty texts";
  }
  EXPECT_THAT(TakeFrames(), IsEmpty());
}

TEST_F(Vsk830Test, EraseAll) {
  InIspMode();
  isp.DoEraseAll(view);
  EXPECT_THAT(TakeFrames(), ElementsAre("S 96 68 00 P", "S 94 00 00 P"));
  EXPECT_EQ(view.Take(), Begins("blankentire:isp mode is  exist", "Label3: Blank ok"));
}

TEST_F(Vsk830Test, PageEraseAsksAndErases) {
  InIspMode();
  view.answers = {"10", "01G0", "0100", "01ff", "0100"};
  isp.DoPageErase(view);
  EXPECT_THAT(TakeFrames(), ElementsAre("S 96 30 02 P", "S 94- P", "S 96 30 03 P", "S 94- P"));
  const std::string start = "ask please input start address:(0000-FFFF)|erase|0000";
  const std::string again = "message please input four word HEX number:(0000-FFFF)";
  const std::string end = "ask please input end address:(0000-FFFF)|erase|FFFF";
  EXPECT_EQ(view.Take(), Begins("page erase:isp mode is  exist", start, again, start, again, start,
                                end, "Label3: page erase ok"));
  isp.DoPageErase(view);
  EXPECT_EQ(view.Take().back(), end);
  EXPECT_THAT(TakeFrames(), IsEmpty()) << "cancelled";
}

TEST_F(Vsk830Test, PageEraseRanges) {
  InIspMode();
  const std::string question = "confirm only addresses 0000-7FFF can be page erased";
  const std::string nothing =
      "message only addresses 0000-7FFF can be page erased: nothing can be erased at 8000 or above";
  const std::string ok = "Label3: page erase ok";
  struct Case {
    std::int32_t start, end;
    std::size_t pages;
    Lines lines;
    bool confirmed = true;
  };
  const Case cases[] = {{0x0400, 0x0100, 0, {ok}},         {0, 0, 256, {question, ok}},
                        {0x7F80, 0x7FFF, 1, {ok}},         {0x7F80, 0x8000, 1, {question, ok}},
                        {0, 0xFFFF, 0, {question}, false}, {0x8000, 0xFFFF, 0, {nothing}}};
  for (const Case& c : cases) {
    view.confirmed = c.confirmed;
    EXPECT_EQ(isp.ErasePageRange(c.start, c.end, view).text.empty(), c.pages == 0);
    EXPECT_EQ(TakeFrames().size(), 2 * c.pages) << c.start << " " << c.end;
    EXPECT_EQ(view.Take(), c.lines) << c.start << " " << c.end;
  }
  board.faults.sdaStuckLow = true;
  EXPECT_EQ(isp.ErasePageRange(0, 1, view).failure, "page erase fail");
  EXPECT_THAT(view.Take(), ElementsAre("Label3 red: page erase fail"));
}

TEST_F(Vsk830Test, OnlyTheLastFollowUpDecidesAPageErase) {
  InIspMode();
  // Behind an erase-all command without its follow-up, page 0's command is refused and its
  // follow-up, the awaited one, is acknowledged.
  frames.Send(0x96, {0x68, 0x00});
  board.faults.refusedByte = {board.wire.FramesSeen() + 1, 0};
  EXPECT_EQ(isp.ErasePageRange(0, 0xFF, view), (RunResult{"page erase ok", "", "", true}))
      << "nobody answered page 0's command";
  EXPECT_THAT(TakeFrames(),
              ElementsAre("S 96 68 00 P", "S 96- P", "S 94 00 00 P", "S 96 30 01 P", "S 94- P"));
  EXPECT_EQ(view.operationText, "page erase ok");
}

TEST_F(Vsk830Test, ProgramsAndVerifiesOnEveryWiring) {
  const auto image = Image(0x180 + 1);
  for (int polarities = 0; polarities < 8; ++polarities) {
    Session wired(ConnectedChip::Vsk830,
                  Wiring((polarities & 1) != 0, (polarities & 2) != 0, (polarities & 4) != 0));
    wired.port.PortBase = 0x378 * (1 + polarities);
    wired.Load(image);
    EXPECT_THAT(wired.Program(),
                ElementsAre("S 96 68 00 P", "S 94 00 00 P", "S 96 D0 P", "S 96 A0 00 P",
                            DataFrame(image, 0), "S 96 A0 01 P", DataFrame(image, 1),
                            wired.CrcFrame(), "S 96 48 00- P", "S 96- P"));
    EXPECT_TRUE(FlashEquals(wired.board.vsk830.Bank(0), image));
    EXPECT_EQ(wired.frames.HwCrc, 0);

    Lines expected =
        Begins("program:isp mode is exist", "Label2 repaint", "Label3: Blank ok", "Label3 repaint");
    for (int percent = 0; percent <= 100; percent += 10) {
      expected.push_back("Label3: finish  " + std::to_string(percent) + "%");
      expected.push_back("Label3 repaint");
    }
    const Lines end{"Label3: finish", "Label3 repaint", "Label3: programcode ok", "Label3 repaint"};
    const Lines quit{"Text6 " + HexText(wired.images.CodeCrc), "Label2: isp mode is out",
                     "select Option5"};
    expected = expected + end + quit;
    EXPECT_EQ(wired.view.Take(),
              expected + Begins("isp mode is out", "select Option5", "Label3: Write Ok"));
  }
}

TEST_F(Vsk830Test, WaitsForTheChip) {
  Load(Image(4));
  const std::uint32_t before = ticks.Elapsed();
  Program();
  EXPECT_NEAR(ticks.Elapsed() - before, 1015, 15);

  InIspMode();
  timing.BitDelayCount = 2;
  const auto steps = [&](auto action) {
    const std::int64_t start = timing.Steps;
    action();
    return timing.Steps - start;
  };
  const auto twoFrames = [&] {
    frames.Send(0x96, {0x30, 0});
    frames.Send(0x94, {0, 0});
  };
  EXPECT_EQ(steps([&] { isp.ErasePageRange(0, 1, view); }) - steps(twoFrames), 501);
  board.faults.unpluggedAfterFrame = 0;
  EXPECT_EQ(steps([&] { isp.ChipErase(); }) - steps(twoFrames), 101);
}

/// What follows "finish" in the texts that show it, in order. A full pair takes every page.
TEST(VskProgress, ByTheSizesOfTheBanks) {
  const auto eleven = [](int first, int step) {
    Lines shown;
    for (int i = 0; i <= 10; ++i) shown.push_back("  " + std::to_string(first + i * step) + "%");
    return shown;
  };
  const Lines tenths = eleven(0, 10), lower = eleven(0, 5), upper = eleven(50, 5);
  struct Case {
    std::size_t bank0;
    std::optional<std::size_t> bank1;
    Lines shown;
  };
  const Case cases[] = {{0, {}, {""}},
                        {1, {}, {"  100%", ""}},
                        {6, {}, {"  0%", ""}},
                        {0x100, {}, tenths},
                        {0x180, {}, tenths + Lines{""}},
                        {0x10000, {}, tenths},
                        {1, 1, {"  50%", "", "  100%", ""}},
                        {0, 0x100, Lines{""} + upper},
                        {0x10000, 0x10000, lower + upper}};
  for (const Case& c : cases) {
    Session session(c.bank1 ? ConnectedChip::Vsk630 : ConnectedChip::Vsk830);
    const auto bank0 = Image(c.bank0, 7);
    if (c.bank1) session.Load(bank0, Image(*c.bank1, 8));
    if (!c.bank1) session.Load(bank0);
    EXPECT_EQ(session.Program()[4], DataFrame(bank0, 0));
    Lines shown;
    for (const std::string& line : session.view.Take()) {
      if (line.starts_with("Label3: finish")) shown.push_back(line.substr(14));
    }
    EXPECT_EQ(shown, c.shown) << c.bank0;
    EXPECT_EQ(session.view.operationText, "Write Ok") << c.bank0;
  }
}

TEST(VskProgramming, ARefusedCommandEndsItsBankAndARefusedDataFrameDoesNot) {
  struct Case {
    std::uint64_t frame;
    std::size_t byte;
    std::string refused, next, result;
    std::optional<std::vector<std::uint8_t>> bank1 = {};
  };
  const Case cases[] = {{6, 2, "S 96 A0 01- P", "S 97 ", " red: programcode fail"},
                        {7, 9, "S 94 00 ", "S 96 A0 02 P", ": programcode ok"},
                        {9, 9, "S 94 00 ", "S 97 ", " red: programcode fail"},
                        {6, 2, "S 96 A0 01- P", "S 96 A1 00 P", ": programcode ok", Image(600)},
                        {12, 2, "S 96 A1 01- P", "S 97 ", " red: programcode fail", Image(600)}};
  for (const Case& c : cases) {
    Session session(c.bank1 ? ConnectedChip::Vsk630 : ConnectedChip::Vsk830);
    session.Load(Image(600));
    if (c.bank1) session.Load(Image(600), *c.bank1);
    const Lines frames = session.Program(c.frame, c.byte);
    EXPECT_THAT(frames[c.frame - 1], StartsWith(c.refused));
    EXPECT_THAT(frames[c.frame], StartsWith(c.next));
    const Lines shown = session.view.Take();
    EXPECT_THAT(shown, Contains(HasSubstr("programcode")).Times(1));
    EXPECT_THAT(shown, Contains("Label3" + c.result));
    EXPECT_EQ(session.view.operationText, "CRC Error");
  }
}

TEST_F(Vsk830Test, NoPageNumberWraps) {
  Load(Image(600));
  images.CodeMax = 65536;
  const Lines sent = Program();
  EXPECT_THAT(view.Take(), Contains("Label3 red: programcode fail"));
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "S 96 A0 00 P"), 1);
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "S 96 A0 FF P"), 1);
}

/// An odd address is sent as it is, which only the frames of one of two banks do.
TEST_F(Vsk830Test, AddressesOfThePageFrames) {
  frames.IspParams[0] = 0x95;
  for (const auto& [chip, command] :
       {std::pair{VskChip::Vsk830, "S 96"}, {VskChip::Vsk630, "S 97"}}) {
    isp.ChipSelect = chip;
    isp.ProgramImage(view);
    EXPECT_THAT(TakeFrames().front(), StartsWith(command));
  }
}

TEST_F(Vsk830Test, PageReadShowsTheChipsPage) {
  Load(Image(0x1B00));
  Program();
  InIspMode();
  view.answers = {"1", "1A"};
  isp.DoPageRead(page, view);
  const std::string ask = "ask please input you want read page number:(00-FF)|input number|00";
  EXPECT_EQ(view.Take(), Begins("read_code:isp mode is  exist", ask,
                                "message please input two word HEX number:(00-FF)", ask,
                                "data this is 1A  page (Read Page Code)"));
  EXPECT_THAT(TakeFrames(), ElementsAre("S 96 00 1A P", StartsWith("S 94 00 Sr 95 [")));
  const std::string read = view.data;
  writer.IspOperate = RunChoice::PageLoad;
  view.answers = {"1A"};
  writer.Run(view);
  EXPECT_EQ(view.data.substr(view.data.find('\n')), read.substr(read.find('\n')));

  isp.DoPageRead(page, view);
  EXPECT_THAT(TakeFrames(), IsEmpty()) << "cancelled";

  board.faults.unpluggedAfterFrame = 0;
  view.data = "as before";
  view.answers = {"03"};
  isp.DoPageRead(page, view);
  EXPECT_EQ(view.data, "as before") << "a refused page is not shown";
  EXPECT_EQ(view.Take().back(), "Label3 red: Page Read fail");
}

}  // namespace
