#include <gtest/gtest.h>

#include <vector>

#include "run_log/run_report.h"
#include "support/fake_ticks.h"
#include "support/temp_folder.h"

namespace {

using namespace std::chrono;

const std::string kHeading =
    "time,seconds,chip,operation,file,size,CRC,chip CRC,result,port,board,program\r\n";

struct RunLogTest : testing::Test {
  TempFolder folder;
  RunLog::Time now = sys_days(2026y / 11 / 2) + 4h + 3min + 5s + 900ms;
  std::vector<std::string> told;
  const RunLog::Way way{"378", "ISP-1, plain", "isp-write"};
  RunLog log{folder / "state", [this] { return way; },
             [this](const std::string& message) { told.push_back(message); },
             [this] { return now; }};
};

TEST_F(RunLogTest, OneLineARun) {
  log.Append({"VSK830",
              "Program",
              {{"C:\\a \"b\".hex", 300, 0, 0xAEE7, 0}, {"two", 50, 1, 0x12}},
              {"CRC Error"},
              749ms});
  now += 24h;
  log.Append({.chip = "VSK630",
              .operation = "Erase All",
              .result = {"Blank ok"},
              .duration = 1min + 3s + 950ms});
  EXPECT_EQ(folder.Read("state/runs.csv"),
            kHeading +
                "2026-11-02T04:03:05Z,0.7,VSK830,Program,\"C:\\a \"\"b\"\".hex + two\",350,AEE7 + "
                "12,0,CRC "
                "Error,378,\"ISP-1, plain\",isp-write\r\n"
                "2026-11-03T04:03:05Z,64.0,VSK630,Erase All,,,,,Blank ok,378,\"ISP-1, "
                "plain\",isp-write\r\n");
  log.Append({.result = {"Write Ok", "programcode fail"}});
  log.Append({.result = {"Erase MCU OK.; CRC FAIL.", "CRC FAIL."}});
  const std::string lines = folder.Read("state/runs.csv");
  EXPECT_NE(lines.find(",Write Ok (red): programcode fail,378"), std::string::npos) << lines;
  EXPECT_NE(lines.find(",Erase MCU OK.; CRC FAIL. (red),378"), std::string::npos) << lines;
  EXPECT_TRUE(told.empty());
}

TEST_F(RunLogTest, AFullLogOrOneOfAnotherVersionBecomesTheOldOne) {
  const std::string full = kHeading + std::string(RunLog::kLargest - kHeading.size(), 'x');
  for (const std::string& old : {full, std::string("time,chip\r\n")}) {
    folder.Write("state/runs.old.csv", "older");
    folder.Write("state/runs.csv", old);
    log.Append({.chip = "RTD2120"});
    log.Append({.chip = "VSK830"});
    EXPECT_EQ(folder.Read("state/runs.old.csv"), old);
    EXPECT_EQ(folder.Read("state/runs.csv"),
              kHeading +
                  "2026-11-02T04:03:05Z,0.0,RTD2120,,,,,,,378,\"ISP-1, plain\",isp-write\r\n" +
                  "2026-11-02T04:03:05Z,0.0,VSK830,,,,,,,378,\"ISP-1, plain\",isp-write\r\n");
  }
}

TEST_F(RunLogTest, ALogThatCannotBeWrittenIsToldOnce) {
  folder.Write("state", "a file where the folder should be");
  log.Append({});
  log.Append({});
  const std::string file = (folder / "state" / "runs.csv").string();
  EXPECT_EQ(told, std::vector{"The log of runs cannot be written: " + file +
                              " (Not a directory). Programming is not affected."});
}

TEST(RunReport, ARunLastsFromItsFirstBeginningAndIsToldOnce) {
  FakeTicks clock{1};
  clock.fineStep = 100ms;
  RunReport report(clock);
  EXPECT_EQ(report.End({.chip = "VSK830"}).duration, 0ms) << "not begun";
  report.Begin();
  report.Forget();
  EXPECT_EQ(report.End({.chip = "VSK830"}).duration, 0ms) << "forgotten";
  report.Begin();
  clock.FineTime();
  report.Begin();
  EXPECT_EQ(report.End({.chip = "VSK830"}).duration, 200ms);
  EXPECT_EQ(report.Told(), 1);
}

}  // namespace
