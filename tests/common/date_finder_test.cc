#include "common/date_finder.h"

#include <gtest/gtest.h>

#include "support/text.h"

namespace customsconv {
namespace {

using Cases = std::vector<std::pair<const char*, const char*>>;

DateSearch Search(bool strict = false, std::size_t limit = 0) {
  DateSearch search;
  search.strict = strict;
  search.limit = limit;
  search.this_year = 2026;
  return search;
}

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
  for (const auto& [text, dates] : Cases{
           {"Счет от 01.02.2024г. №5", "01.02.2024@9"},
           {"1.2.24", "1.2.24@1"},
           {"01.02.202", ""},
           {"01.02-2024", ""},
           {"1.2.24.5", "1.2.24@1"},  // a separator ends the year
           {"1.1.1.2.24", ""},        // the rest of "1.1.1" is no fresh start
           {"101.02.2024", ""},
           {"31.02.2024 1/3/24", "1/3/24@12"},  // the calendar lacks the first
           {"45.13.24.01.02.2024", "01.02.2024@10"},
           {"-01.02.2024", "01.02.2024@2"},
           {"12345-01.02.2024", ""},  // "-" belongs to the number before it
           {"№1-2 01-02-24,3/4/2025", "01-02-24@6 3/4/2025@15"},
           {"30.12.1899", ""},  // day 0 is no date
       }) {
    EXPECT_EQ(Dates(text, Search()), dates) << text;
  }
  EXPECT_EQ(Dates("01.02.2024 3.4.25", Search(false, 8)), "01.02.20@1");
  DateSearch slashes = Search();
  slashes.separators = CharSet("/");
  EXPECT_EQ(CountDates("1.2.24 3/4/25", slashes), 1U);
}

TEST(DateFinder, StrictModeLooksAtTheNeighbours) {
  for (const auto& [text, dates] : Cases{{"от01.02.2024г", "01.02.2024@3"},
                                         {"(01.02.24)", "01.02.24@2"},
                                         {"С01.02.24ПО", "01.02.24@2"},
                                         {"А01.02.2024", ""},
                                         {"#01.02.2024", ""},
                                         {"01.02.2024.", ""},
                                         {"г01.02.2024", ""},
                                         {"01.02.2024т", ""}}) {
    EXPECT_EQ(Dates(text, Search(true)), dates) << text;
    EXPECT_NE(Dates(text, Search(false)), "") << text;
  }
}

TEST(DateFinder, RemovesWhatBelongsToTheDate) {
  for (const auto& [text, rest] : Cases{{"Счет от 01.02.2024г. №5", "Счет№5"},
                                        {"счет_ДО__1.2.24  Г, а", "счет, а"},
                                        {"5 с 1.2.24 по", "5по"},
                                        {"с 1.2.24", "с"},
                                        {"лот 1.2.24", "л"},
                                        {"а 1.2.24 год", "агод"},
                                        {"1.2.24 г", ""},
                                        {"а,1.2.24г.;б", "а,;б"},
                                        {"нет", "нет"}}) {
    std::string remaining = Win(text);
    const FoundDate expected = ExtractDate(1, remaining, Search());
    const FoundDate removed = RemoveDate(1, remaining, Search());
    EXPECT_EQ(Utf8(remaining), rest);
    EXPECT_EQ(removed.text, expected.text);
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
