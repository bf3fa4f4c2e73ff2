#include "services/numbering.h"

#include <gtest/gtest.h>

#include "support/environment_builder.h"

namespace customsconv {
namespace {

struct Station : TestEnvironment {
  explicit Station(std::string_view kord_ini = {}) : TestEnvironment(kord_ini) {
    host.clock.Set({2026, 3, 17}, 12);  // day 46098
  }
  std::string Next(std::string_view series, bool four_digit_year = false) {
    return NextRegNumber(series, four_digit_year, environment).str();
  }
};

TEST(Numbering, CompactDatesOfADeclaration) {
  Station station;
  for (const char* good : {"170326", "17036", "17032026", "010190", "210427", "\n170326 "}) {
    EXPECT_EQ(CheckCompactDate(good, station), good);
  }
  for (const char* bad : {"", "1703266", "311289", "220427", "300226", "17.326"}) {
    EXPECT_EQ(CheckCompactDate(bad, station), "") << bad;
  }
}

TEST(Numbering, NumbersByPatternAndCounters) {
  const struct {
    std::string series, pattern, ini, first, second;
  } cases[] = {
      {"S", "%DNUM-%GNUM-%GNUM", "", "0000002-0000002-%GNUM", "0000003-0000003-%GNUM"},
      {"S", "%DNUM-%GNUM",  // a new day
       "MinOrdNumber=7\n[S]\nLastDate=46097\nTodayOrdNumber=5\nTotalOrdNumber=9\n",
       "0000007-0000010", "0000008-0000011"},
      {"S", "%GNUM",  // a new year
       "MinOrdNumber=7\n[S]\nLastDate=46000\nTotalOrdNumber=90\n", "0000007", "0000008"},
      {"S", "%GNUM",  // one that does not count
       "NewYearNumber=0\n[S]\nLastDate=46000\nTotalOrdNumber=90\n", "0000091", "0000092"},
      {"S", "%GNUM", "MinOrdNumber=3\n[S]\nTotalOrdNumber=9999999\n", "0000003", "0000004"},
      {"S", "%DATE", "[System]\nRegNumsYear2Digit=0\n", "17036", "17036"},
      {"DUT", "%CODE", "CustomHouseCode=10702020\n", "10702020", "10702020"},
      {"DUT", "%DATE", "", "17032026", "17032026"}};
  for (const auto& c : cases) {
    Station station("[Kord.ArmTI]\nRegNumStructure=" + c.pattern + "\n" + c.ini);
    EXPECT_EQ(station.Next(c.series), c.first) << c.pattern << " with\n" << c.ini;
    EXPECT_EQ(station.Next(c.series), c.second) << c.pattern << " with\n" << c.ini;
  }
  Station station;
  EXPECT_EQ(station.Next("Kord.ArmTi"), "00000000/170326/0000002");
  EXPECT_EQ(station.Next("Kord.ArmTi", true), "00000000/17032026/0000003");
  EXPECT_EQ(station.host.files["C:\\PROG\\kord.ini"],  // no daily counter
            "[Kord.ArmTi]\r\nLastDate=46098\r\nTotalOrdNumber=3\r\n");
}

TEST(Numbering, SharesACounterFileBetweenStations) {
  Station station("[System]\nLastNumsFile=Nums/last.ini\\\n");
  station.host.files["C:\\PROG\\Nums\\last.ini"] = "[S]\r\nTotalOrdNumber=41\r\n";
  EXPECT_EQ(station.Next("S"), "00000000/170326/0000042");
  station.host.files["C:\\PROG\\Nums\\last.ini"] = "[S]\r\nN=50\r\n";  // by others
  EXPECT_EQ(NextCounter("S", "N", 1, 60, station), 51);
  WriteCounter("S", "N", 60, station);
  EXPECT_EQ(NextCounter("S", "N", 1, 60, station), 1);
  EXPECT_EQ(ReadCounter("S", "N", 0, station), 1);
  EXPECT_FALSE(station.config().SectionExists("S"));
  station.config().SetBool("Kord", "SQLLastNum", true);  // then the main configuration counts
  EXPECT_EQ(NextCounter("S", "N", 6, 60, station), 7);
}

TEST(Numbering, AsksBeforeItMakesTheSharedFile) {
  constexpr const char* kShared = "C:\\PROG\\last.ini";
  for (const bool create : {false, true}) {
    Station station("[System]\nLastNumsFile=last.ini\n");
    station.host.dialogs.confirmations = {create};
    station.host.dialogs.on_question = [&] {
      const auto other_station = station.host.files.Lock(kShared, [] { FAIL() << "must wait"; });
    };
    EXPECT_EQ(ReadCounter("S", "N", 8, station), 8);  // asks nothing
    EXPECT_EQ(NextCounter("S", "N", 1, 60, station), 2);
    ASSERT_EQ(station.host.dialogs.log.size(), 1U);
    EXPECT_EQ(station.host.dialogs.log[0],
              "confirm: Не могу открыть файл общей нумерации деклараций\r\nC:\\PROG\\last.ini"
              "\r\nСоздать новый файл и начать нумерацию с единицы?");
    EXPECT_EQ(station.host.files.Has(kShared), create);
    EXPECT_EQ(station.config().ReadInteger("S", "N", 0), create ? 0 : 2);
    station.host.files.Remove(kShared);
    station.host.dialogs.confirmations = {create};
    station.host.dialogs.on_question = [&] {
      station.host.files[kShared] = "[S]\r\nN=40\r\n";  // by another station
    };
    EXPECT_EQ(NextCounter("S", "N", 1, 60, station), 41) << "looked at again after the question";
  }
}

TEST(Numbering, GivesNoNumberThatCouldNotBeStoredAndStoresItNeverLater) {
  for (const std::string ini : {"", "[System]\nLastNumsFile=last.ini\n"}) {
    Station station(ini + "[S]\nN=5\n");
    station.host.files["C:\\PROG\\last.ini"] = "[S]\r\nN=5\r\n";
    const auto next = [&](bool may_write) {  // each time by a configuration of its own
      TConfiguration config(station.host, "C:\\PROG\\kord.ini", CreateMode::kMustExist,
                            CodePage::kWindows);
      Environment environment = station.environment;
      environment.config = &config;
      station.host.files.SetReadOnly("C:\\PROG", !may_write);
      std::int32_t number = 0;
      const auto draw = [&] { number = NextCounter("S", "N", 1, 60, environment); };
      EXPECT_EQ(ErrorOf(draw) == kNoError, may_write);
      station.host.files.SetReadOnly("C:\\PROG", false);
      return number;
    };
    EXPECT_EQ(next(true), 6);
    EXPECT_EQ(next(false), 0);
    EXPECT_EQ(next(true), 7) << "the configuration of the failed call wrote nothing when it went";
  }
}

}  // namespace
}  // namespace customsconv
