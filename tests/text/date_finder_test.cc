#include "text/date_finder.h"

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
  const Cases cases = {
      {"1.2.24", "1.2.24@1"},         {"-01.02.2024", "01.02.2024@2"},
      {"1.2.24.5", "1.2.24@1"},       {"45.13.24.1.2.24", "1.2.24@10"},
      {"31.2.24 1/3/24", "1/3/24@9"}, {"№1-2 1-2-24,3/4/25", "1-2-24@6 3/4/25@13"}};
  for (const auto& [text, dates] : cases) EXPECT_EQ(Dates(text, Search()), dates) << text;
  for (const char* text :
       {"01.02.202", "01.02-2024", "101.02.2024", "1.1.1.2.24", "12345-01.02.2024", "30.12.1899"}) {
    EXPECT_EQ(Dates(text, Search()), "") << text;
  }
  EXPECT_EQ(Dates("01.02.2024 3.4.25", Search(false, 8)), "01.02.20@1");
  DateSearch slashes = Search();
  slashes.separators = CharSet("/");
  EXPECT_EQ(CountDates("1.2.24 3/4/25", slashes), 1U);
}

TEST(DateFinder, StrictModeLooksAtTheNeighbours) {
  EXPECT_EQ(Dates("от1.2.2024г (3.4.25)С5.6.24ПО", Search(true)), "1.2.2024@3 3.4.25@14 5.6.24@22");
  for (const char* text : {"А1.2.2024", "#1.2.24", "1.2.2024.", "г1.2.24", "1.2.2024т"}) {
    EXPECT_EQ(Dates(text, Search(true)), "") << text;
    EXPECT_NE(Dates(text, Search(false)), "") << text;
  }
}

TEST(DateFinder, RemovesWhatBelongsToTheDate) {
  const Cases cases = {{"Счет от 1.2.2024г. №5", "Счет№5"},
                       {"счет_ДО__1.2.24  Г, а", "счет, а"},
                       {"а,1.2.24г.;б", "а,;б"},
                       {"5 с 1.2.24 по", "5по"},
                       {"а 1.2.24 год", "агод"},
                       {"лот с 1.2.24", "лот"},
                       {"полет 1.2.24", "полет"},
                       {"с 1.2.24 г", "с"}};
  for (const auto& [text, rest] : cases) {
    std::string remaining = Win(text);
    const FoundDate expected = ExtractDate(1, remaining, Search());
    const FoundDate removed = RemoveDate(1, remaining, Search());
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
