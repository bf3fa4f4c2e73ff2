#include "text/dates.h"

#include <gtest/gtest.h>

#include "services/kept_today.h"
#include "support/fake_host.h"
#include "support/text.h"

namespace customsconv {
namespace {

constexpr int kThisYear = 2026;

std::string Shown(std::optional<Date> date) { return date ? LocalDateText(*date) : "none"; }

TEST(Dates, LocalShortFormatIsStrict) {
  const std::pair<const char*, const char*> cases[] = {{" 5.3.2009\t", "05.03.2009"},
                                                       {"31.12.95", "31.12.1995"},
                                                       {"1.1.76", "01.01.1976"},
                                                       {"1.1.75", "01.01.2075"},
                                                       {"1.1.6", "01.01.2006"}};
  for (const auto& [text, date] : cases) EXPECT_EQ(Shown(ParseLocalDate(text, kThisYear)), date);
  for (const char* text :
       {"29.02.2023", "1.1.202", "1.1.20241", "05-03-2009", "05.03", "5.3.9 1"}) {
    EXPECT_EQ(Shown(ParseLocalDate(text, kThisYear)), "none") << text;
  }
  for (const char* text : {"05-03-2009", "5/3/09", "05.03/2009"}) {
    EXPECT_EQ(Shown(TextToDate(text, -1, kThisYear)), "05.03.2009") << text;
  }
  EXPECT_EQ(TextToDate("2009-03-05", -1, kThisYear), -1);
  EXPECT_EQ(TextToDate(std::string(248, ' ') + "5.3.2009", -1, kThisYear), -1);  // cut: 5.3.200
}

TEST(Dates, FormatsReadPositionByPosition) {
  const std::tuple<std::string_view, std::string_view, std::string_view> cases[] = {
      {"YYYY-MM-DD", "2009-03-05T23:59:59", "2009-03-05 00:00:00"},
      {"dd-mm-yyyy", "05/03/2009", "2009-03-05 00:00:00"},
      {"yyyy-mm-dd hh:nn:ss", "2009-03-05  7:59:59", "2009-03-05 07:59:59"},
      {"d.mm.yy", "5.03.49", "2049-03-05 00:00:00"},
      {"d.mm.yy", "15.03.50", "1950-03-15 00:00:00"},
      {"dd mmm yyyy", "5  jUL 2009", "2009-07-05 00:00:00"},
      {"mm.dd.yyyy", "03.05.209", "0209-03-05 00:00:00"}};
  for (const auto& [format, text, moment] : cases) {
    EXPECT_EQ(FormatDateTime("yyyy-mm-dd hh:nn:ss", TextToDateTimeFmt(format, text)), moment);
  }
  for (const char* text : {"2024-02-30", "2009-3 -05", "2009-03-", "2009-13-01", "05.03.2009"}) {
    EXPECT_EQ(TextToDateFmtDef("yyyy-mm-dd", text, -1), -1) << text;
  }
  EXPECT_EQ(TextToDateFmtDef("yyyy-mm-dd nn", "2009-03-05 60", -1), -1);
  EXPECT_EQ(ErrorOf([] { (void)TextToDateTimeFmt("yyyy-mm-dd", "2024-02-30"); }),
            "Invalid date/time");
  EXPECT_EQ(TextToDateTimeFmt("yyyy-mm-dd", "1899-12-31"), 1);
}

TEST(Dates, FormatsWrite) {
  const DateTime moment = DateOf({2026, 3, 7}).value() + (9 * 3600 + 5 * 60 + 4) / 86400.0;
  EXPECT_EQ(FormatDateTime("ddmmyyyy D.M.YY", moment), "07032026 7.3.26");
  EXPECT_EQ(FormatDateTime("hh:nn:ss h/n/s T", moment), "09:05:04 9/5/4 T");
  EXPECT_EQ(FormatDateTime("dd hh:nn:ss", 1.0 - 1e-10), "31 00:00:00");
}

TEST(KeptToday, IsTakenOnceAndAgainOnRequest) {
  FakeClock clock;
  KeptToday today(clock);
  const Date first = today.Today();
  clock.Set({2026, 3, 17});
  EXPECT_EQ(today.Today(), first);
  EXPECT_EQ(Shown(today.Today(true)), "17.03.2026");
}

}  // namespace
}  // namespace customsconv
