#include "common/dates.h"

#include <gtest/gtest.h>

#include <string>

#include "common/kept_today.h"
#include "support/fake_clock.h"
#include "support/text.h"

namespace customsconv {
namespace {

constexpr int kThisYear = 2026;

std::string Shown(std::optional<Date> date) { return date ? LocalDateText(*date) : "none"; }

TEST(Dates, LocalShortFormatIsStrict) {
  const struct {
    std::string_view text;
    std::string_view date;
  } cases[] = {
      {"05.03.2009", "05.03.2009"}, {" 5.3.2009\t", "05.03.2009"}, {"31.12.95", "31.12.1995"},
      {"1.1.76", "01.01.1976"},     {"1.1.75", "01.01.2075"},      {"29.02.2023", "none"},
      {"1.1.202", "none"},          {"1.1.20241", "none"},         {"05-03-2009", "none"},
      {"05.03.2009 12:00", "none"},
  };
  for (const auto& c : cases) EXPECT_EQ(Shown(ParseLocalDate(c.text, kThisYear)), c.date) << c.text;
  EXPECT_EQ(Shown(ParseLocalDate("1.1.49", 1999)), "01.01.1949");
}

TEST(Dates, AllSeparatorsCountInTextToDate) {
  const Date expected = DateOf({2009, 3, 5}).value();
  for (const char* text : {"05-03-2009", "5/3/09", "05.03/2009"}) {
    EXPECT_EQ(TextToDate(text, -1, kThisYear), expected) << text;
  }
  EXPECT_EQ(TextToDate("2009-03-05", -1, kThisYear), -1);
  EXPECT_EQ(TextToDate(std::string(248, ' ') + "5.3.2009", -1, kThisYear), -1);  // cut: 5.3.200
  EXPECT_EQ(TextToDate("30.12.1899", -1, kThisYear), 0);
}

TEST(Dates, FormatsReadPositionByPosition) {
  const struct {
    std::string_view format, text, moment;  // empty: refused
  } cases[] = {{"yyyy-mm-dd", "2009-03-05", "2009-03-05 00:00:00"},
               {"YYYY-MM-DD", "2009-03-05T23:59:59", "2009-03-05 00:00:00"},
               {"dd-mm-yyyy", "05/03/2009", "2009-03-05 00:00:00"},
               {"yyyy-mm-dd hh:nn:ss", "2009-03-05 23:59:59", "2009-03-05 23:59:59"},
               {"yyyy-mm-ddThh:n", "2009-03-05T 7:05", "2009-03-05 07:05:00"},
               {"d.mm.yy", "5.03.49", "2049-03-05 00:00:00"},
               {"d.mm.yy", "15.03.50", "1950-03-15 00:00:00"},
               {"dd.mm.yyyy", "5 . 3.2009", "2009-03-05 00:00:00"},
               {"dd mmm yyyy", "05 jUL 2009", "2009-07-05 00:00:00"},
               {"mm.dd.yyyy", "03.05.209", "0209-03-05 00:00:00"},
               {"yyyy-mm-dd", "2024-02-30", ""},
               {"yyyy-mm-dd", "2009-3 -05", ""},
               {"yyyy-mm-dd", "2009-03-", ""},
               {"yyyy-mm-dd", "05.03.2009", ""},
               {"dd mmm yyyy", "05 xyz 2009", ""},
               {"yyyy-mm-dd hh:nn:ss", "2009-03-05 23:59:60", ""}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.format) + " of " + std::string(c.text));
    const auto moment = ParseDateTimeFmt(c.format, c.text);
    EXPECT_EQ(moment ? FormatDateTime("yyyy-mm-dd hh:nn:ss", *moment) : "", c.moment);
  }
  EXPECT_EQ(ErrorOf([] { (void)TextToDateTimeFmt("yyyy-mm-dd", "2024-02-30"); }),
            "Invalid date/time");
  EXPECT_EQ(TextToDateFmtDef("yyyy-mm-dd", "2024-02-30", 0), 0);
  EXPECT_EQ(TextToDateTimeFmt("yyyy-mm-dd", "1899-12-31"), 1);
}

TEST(Dates, FormatsWrite) {
  const DateTime moment = DateOf({2026, 3, 7}).value() + (9 * 3600 + 5 * 60 + 4) / 86400.0;
  const struct {
    std::string_view format, text;
  } cases[] = {{"ddmmyyyy", "07032026"},
               {"D.M.YY", "7.3.26"},
               {"yyyy-mm-dd hh:nn:ss - ", "2026-03-07 09:05:04 - "},
               {"h/n/s Г", "9/5/4 Г"}};
  for (const auto& c : cases) EXPECT_EQ(FormatDateTime(c.format, moment), c.text);
  EXPECT_EQ(FormatDateTime("dd hh:nn:ss", 1.0 - 1e-10), "31 00:00:00");
}

TEST(Dates, EverySecondOfADayIsWrittenAsItWasRead) {
  const Date day = DateOf({2026, 3, 7}).value();
  for (int second = 0; second < 86400; second += 7) {
    const std::string text = FormatDateTime("yyyymmddhhnnss", day + second / 86400.0);
    ASSERT_EQ(std::stoi(text.substr(8, 2)) * 3600 + std::stoi(text.substr(10, 2)) * 60 +
                  std::stoi(text.substr(12)),
              second);
  }
}

TEST(KeptToday, IsTakenOnceAndAgainOnRequest) {
  FakeClock clock;
  KeptToday today(clock);
  clock.Set({2026, 3, 16}, 23, 59);
  EXPECT_EQ(Shown(today.Today()), "16.03.2026");
  clock.Set({2026, 3, 17});
  EXPECT_EQ(Shown(today.Today()), "16.03.2026");
  EXPECT_EQ(Shown(today.Today(true)), "17.03.2026");
}

}  // namespace
}  // namespace customsconv
