#include "common/date_finder.h"

#include <gtest/gtest.h>

#include "support/text.h"

namespace customsconv {
namespace {

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
  const struct {
    const char* text;
    const char* dates;
  } cases[] = {
      {"Счет от 01.02.2024г. №5", "01.02.2024@9"},
      {"1.2.24", "1.2.24@1"},
      {"01.02.202", ""},
      {"01.02-2024", ""},
      {"1.2.24.5", "1.2.24@1"},  // a separator ends the year
      {"1.1.1.2.24", ""},        // the rest of "1.1.1" is no fresh start
      {"1.1.x1.2.24", "1.2.24@6"},
      {"101.02.2024", ""},
      {"31.02.2024 1/3/24", "1/3/24@12"},  // the calendar lacks the first
      {"45.13.24.01.02.2024", "01.02.2024@10"},
      {"-01.02.2024", "01.02.2024@2"},
      {"12345-01.02.2024", ""},  // "-" belongs to the number before it
      {"№1-2 01-02-24,3/4/2025", "01-02-24@6 3/4/2025@15"},
      {"30.12.1899", ""},  // day 0 is no date
  };
  for (const auto& c : cases) EXPECT_EQ(Dates(c.text, Search()), c.dates) << c.text;
  EXPECT_EQ(ExtractDate(0, "01.02.2024", Search()).position, 0U);
}

TEST(DateFinder, StrictModeLooksAtTheNeighbours) {
  const struct {
    const char* text;
    const char* dates;
  } cases[] = {{"от01.02.2024г", "01.02.2024@3"},
               {"С01.02.24ПО", "01.02.24@2"},
               {"А01.02.2024", ""},
               {"#01.02.2024", ""},
               {"01.02.2024/5", ""},
               {"01.02.2024.", ""},
               {"(01.02.2024)", "01.02.2024@2"},
               {"01.02.2024т", ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(Dates(c.text, Search(true)), c.dates) << c.text;
    EXPECT_NE(Dates(c.text, Search(false)), "") << c.text;
  }
}

TEST(DateFinder, LooksAtTheFirstCharactersOnly) {
  EXPECT_EQ(Dates("01.02.24 03.04.25", Search(false, 10)), "01.02.24@1");
  EXPECT_EQ(Dates("01.02.2024", Search(false, 8)), "01.02.20@1");
}

TEST(DateFinder, CountingTakesItsOwnSeparators) {
  DateSearch search = Search();
  search.separators = CharSet("/");
  EXPECT_EQ(CountDates("1.2.24 3/4/25", search), 1U);
}

TEST(DateFinder, RemovesWhatBelongsToTheDate) {
  const struct {
    const char* text;
    const char* rest;
  } cases[] = {
      {"Счет от 01.02.2024г. №5", "Счет№5"},
      {"счет_ДО__01.02.24  Г, а", "счет, а"},
      {"5 с 01.02.2024 по", "5по"},
      {"с 01.02.2024", "с"},  // no blank before the preposition
      {"лот 01.02.2024", "л"},
      {"а 01.02.2024 год", "агод"},  // a word, not the year mark
      {"01.02.2024 г", ""},
      {"а,01.02.2024г.;б", "а,;б"},
  };
  for (const auto& c : cases) {
    std::string text = Win(c.text);
    const FoundDate expected = ExtractDate(1, text, Search());
    const FoundDate removed = RemoveDate(1, text, Search());
    EXPECT_EQ(Utf8(text), c.rest);
    EXPECT_EQ(removed.text, expected.text);
    EXPECT_EQ(removed.position, expected.position);
  }
  std::string two = "1.2.24 3.4.25";
  EXPECT_EQ(RemoveDate(2, two, Search()).text, "3.4.25");
  EXPECT_EQ(two, "1.2.24");
}

TEST(DateFinder, LastDate) {
  EXPECT_EQ(ExtractLastDate("1.2.24 3.4.25 5", 0, 2026).text, "3.4.25");
  EXPECT_EQ(ExtractLastDate("1.2.24 3.4.25 5", 9, 2026).text, "1.2.24");
  EXPECT_EQ(ExtractLastDate("1.2.x24", 0, 2026).text, "");
}

}  // namespace
}  // namespace customsconv
