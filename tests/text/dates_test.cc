#include "text/dates.h"

#include <gtest/gtest.h>

#include "support/text.h"
#include "text/date_finder.h"
#include "text/date_format.h"
#include "text/date_forms.h"

namespace customsconv {
namespace {

constexpr int kThisYear = 2026;

std::string Shown(std::optional<Date> date) { return date ? LocalDateText(*date) : "none"; }

TEST(Dates, LocalShortFormatIsStrict) {
  for (const auto& [text, date] :
       Cases({" 5.3.2009\t -> 05.03.2009", "31.12.95 -> 31.12.1995", "1.1.76 -> 01.01.1976",
              "1.1.75 -> 01.01.2075", "1.1.6 -> 01.01.2006"})) {
    EXPECT_EQ(Shown(ParseLocalDate(text, kThisYear)), date);
  }
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
  using Form = std::string (*)(std::string_view);
  const Form compact = [](std::string_view date) { return CompactDate(date, false); };
  const Form from_digits = [](std::string_view digits) { return DottedFromDigits(digits); };
  const std::pair<Form, std::vector<std::pair<std::string, std::string>>> forms[] = {
      {DottedFromYearFirst, Cases({"2015-06-11 -> 11.06.2015", "year?mo?da -> da.mo.year"})},
      {SixDigitsFromYearFirst, Cases({"2015-06-11 -> 110615"})},
      {DottedFromDayFirst, Cases({"11/06/2015 -> 11.06.2015", "11-06-15 -> 11.06.15"})},
      {SixDigitsFromDayFirst, Cases({"11.06.2015 -> 110615", "1.6.15 -> 1..115", "1. -> 1.1."})},
      {compact, Cases({"17.03.2026 -> 170326", "2026-3/17 -> 26317", "2026 -> 26"})},
      {from_digits,
       Cases({"110615 -> 11.06.15", "11062015 -> 11.06.2015", "11065 -> 11.06.05", "1106201 -> "})},
      {WithoutCentury, Cases({"11062015 -> 110615", "110615 -> 110615"})},
      {SixDigitsFromTable, Cases({"20150611 -> 110615"})},
      {DottedFromTable, Cases({"20150611 -> 11.06.15", "201506 -> .06.15", " -> .."})}};
  for (const auto& [form, cases] : forms) {
    for (const auto& [text, expected] : cases) EXPECT_EQ(form(text), expected);
  }
  EXPECT_EQ(CompactDate("17.03.2026", true), "17032026");
  EXPECT_EQ(DottedFromDigits("11065", '9'), "11.06.95");
  const Date june = *DateOf({2015, 6, 1});
  EXPECT_EQ(TableDigits(june) + " " + XmlDateText(june), "20150601 2015-06-01");
  EXPECT_EQ(TableDigits(*DateOf({915, 6, 11})), "09150611");
  EXPECT_EQ(CompactDateText(june, 4) + " " + CompactDateText(june, 2), "01062015 010615");
  EXPECT_EQ(CompactDateText(june, 1), "01065");
}

TEST(Dates, RegistrationDaysWithAndWithoutTheEnds) {
  const Date today = *DateOf({2026, 3, 17}), first = *DateOf({1990, 1, 1}), last = today + 400;
  for (const Date day : {first - 1, first, first + 1, last - 1, last, last + 1}) {
    EXPECT_EQ(MayBeRegistrationDay(day, today, EndDays::kIncluded), day >= first && day <= last);
    EXPECT_EQ(MayBeRegistrationDay(day, today, EndDays::kExcluded), day > first && day < last);
  }
}

const DateSearch kAnywhere{.this_year = kThisYear};
const DateSearch kStrict{.strict = true, .this_year = kThisYear};

// All dates of the text, as "text@position".
std::string Dates(std::string_view utf8, const DateSearch& search) {
  const std::string text = Win(utf8);
  std::string dates;
  std::size_t n = 1;
  for (FoundDate date = ExtractDate(n, text, search); !date.text.empty();
       date = ExtractDate(++n, text, search)) {
    if (n > 1) dates += ' ';
    dates += date.text + '@' + std::to_string(date.position);
  }
  EXPECT_EQ(CountDates(text, search), n - 1) << utf8;
  return dates;
}

TEST(DateFinder, FindsDatesInText) {
  for (const auto& [text, dates] :
       Cases({"1.2.24 -> 1.2.24@1", "-01.02.2024 -> 01.02.2024@2", "1.2.24.5 -> 1.2.24@1",
              "45.13.24.1.2.24 -> 1.2.24@10", "31.2.24 1/3/24 -> 1/3/24@9",
              "№1-2 1-2-24,3/4/25 -> 1-2-24@6 3/4/25@13"})) {
    EXPECT_EQ(Dates(text, kAnywhere), dates) << text;
  }
  for (const char* text :
       {"01.02.202", "01.02-2024", "101.02.2024", "1.1.1.2.24", "12345-01.02.2024", "30.12.1899"}) {
    EXPECT_EQ(Dates(text, kAnywhere), "") << text;
  }
  EXPECT_EQ(Dates("01.02.2024 3.4.25", {.limit = 8, .this_year = kThisYear}), "01.02.20@1");
  EXPECT_EQ(CountDates("1.2.24 3/4/25", {.separators = "/", .this_year = kThisYear}), 1U);
}

TEST(DateFinder, StrictModeLooksAtTheNeighbours) {
  EXPECT_EQ(Dates("от1.2.2024г (3.4.25)С5.6.24ПО", kStrict), "1.2.2024@3 3.4.25@14 5.6.24@22");
  for (const char* text : {"А1.2.2024", "#1.2.24", "1.2.2024.", "г1.2.24", "1.2.2024т"}) {
    EXPECT_EQ(Dates(text, kStrict), "") << text;
    EXPECT_NE(Dates(text, kAnywhere), "") << text;
  }
}

TEST(DateFinder, RemovesWhatBelongsToTheDate) {
  for (const auto& [text, rest] :
       Cases({"Счет от 1.2.2024г. №5 -> Счет№5", "счет_ДО__1.2.24  Г, а -> счет, а",
              "а,1.2.24г.;б -> а,;б", "5 с 1.2.24 по -> 5по", "а 1.2.24 год -> агод",
              "лот с 1.2.24 -> лот", "полет 1.2.24 -> полет", "с 1.2.24 г -> с"})) {
    std::string remaining = Win(text);
    const FoundDate expected = ExtractDate(1, remaining, kAnywhere);
    const FoundDate removed = RemoveDate(1, remaining, kAnywhere);
    EXPECT_EQ(Utf8(remaining), rest);
    EXPECT_EQ(removed.position, expected.position);
  }
}

TEST(DateFinder, LastDate) {
  EXPECT_EQ(ExtractLastDate("1.2.24 3.4.25 5", 0, 2026).text, "3.4.25");
  EXPECT_EQ(ExtractLastDate("1.2.24 3.4.25 5", 9, 2026).text, "1.2.24");
  EXPECT_EQ(ExtractLastDate("1.2.x24", 0, 2026).text, "");
}

}  // namespace
}  // namespace customsconv
