#include "text/dates.h"

#include <gtest/gtest.h>

#include "support/text.h"
#include "text/date_format.h"
#include "text/date_forms.h"

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

TEST(Dates, FormsChangeByPosition) {
  const std::pair<std::string, std::string> cases[] = {
      {DottedFromYearFirst("2015-06-11"), "11.06.2015"},
      {DottedFromYearFirst("year?mo?da"), "da.mo.year"},
      {SixDigitsFromYearFirst("2015-06-11"), "110615"},
      {DottedFromDayFirst("11/06/2015"), "11.06.2015"},
      {DottedFromDayFirst("11-06-15"), "11.06.15"},
      {SixDigitsFromDayFirst("11.06.2015"), "110615"},
      {SixDigitsFromDayFirst("1.6.15"), "1..115"},
      {SixDigitsFromDayFirst("1."), "1.1."},
      {CompactDate("17.03.2026", false), "170326"},
      {CompactDate("2026-3/17", false), "26317"},
      {CompactDate("17.03.2026", true), "17032026"},
      {CompactDate("2026", false), "26"},
      {DottedFromDigits("110615"), "11.06.15"},
      {DottedFromDigits("11062015"), "11.06.2015"},
      {DottedFromDigits("11065"), "11.06.05"},
      {DottedFromDigits("11065", '9'), "11.06.95"},
      {DottedFromDigits("1106201"), ""},
      {WithoutCentury("11062015"), "110615"},
      {WithoutCentury("110615"), "110615"},
      {SixDigitsFromTable("20150611"), "110615"},
      {DottedFromTable("20150611"), "11.06.15"},
      {DottedFromTable("201506"), ".06.15"},
      {DottedFromTable(""), ".."},
      {TableDigits(*DateOf({2015, 6, 1})), "20150601"},
      {TableDigits(*DateOf({915, 6, 11})), "09150611"},
      {XmlDateText(*DateOf({2015, 6, 1})), "2015-06-01"},
      {CompactDateText(*DateOf({2015, 6, 1}), 4), "01062015"},
      {CompactDateText(*DateOf({2015, 6, 1}), 2), "010615"},
      {CompactDateText(*DateOf({2015, 6, 1}), 1), "01065"}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(text, expected);
}

TEST(Dates, RegistrationDaysWithAndWithoutTheEnds) {
  const Date today = *DateOf({2026, 3, 17}), first = *DateOf({1990, 1, 1}), last = today + 400;
  for (const Date day : {first - 1, first, first + 1, last - 1, last, last + 1}) {
    EXPECT_EQ(MayBeRegistrationDay(day, today, EndDays::kIncluded), day >= first && day <= last);
    EXPECT_EQ(MayBeRegistrationDay(day, today, EndDays::kExcluded), day > first && day < last);
  }
}

}  // namespace
}  // namespace customsconv
