#include "base/letter_case.h"

#include <gtest/gtest.h>

#include "base/date_time.h"
#include "support/text.h"

namespace customsconv {
namespace {

TEST(LetterCase, OnlyLatinLettersRussianLettersAndYoHaveCases) {
  for (unsigned byte = 0; byte < 256; ++byte) {
    unsigned expected = byte;
    if ((byte >= 'a' && byte <= 'z') || byte >= 0xE0) expected = byte - 0x20;
    if (byte == 0xB8) expected = 0xA8;
    const std::string upper = UpperCaseRu(std::string(1, static_cast<char>(byte)));
    EXPECT_EQ(upper, std::string(1, static_cast<char>(expected))) << byte;
  }
  EXPECT_EQ(UpperCaseLatin(Win("Ёж x")), Win("Ёж X"));
}

TEST(LetterCase, ComparesUpperCasedBytes) {
  EXPECT_TRUE(SameTextRu(Win("ёлка a"), Win("ЁЛКА A")));
  EXPECT_FALSE(SameTextRu("ab", "a"));
  EXPECT_EQ(CompareTextRu("abc", "ABC"), 0);
  EXPECT_LT(CompareTextRu("z", Win("А")), 0);  // bytes are unsigned
  EXPECT_LT(CompareTextRu("a", "AB"), 0);
  EXPECT_GT(CompareTextRu("_", "z"), 0);  // "_" stands behind "Z"
  EXPECT_TRUE(StartsWithRu(Win("ГТД: x"), Win("гтд:")));
  EXPECT_FALSE(StartsWithRu("a", "ab"));
  EXPECT_EQ(NoCaseHash()(Win("Ёж")), NoCaseHash()(Win("ёЖ")));
}

TEST(DateTime, CountsDaysOfTheCalendar) {
  EXPECT_EQ(DateOf({1899, 12, 30}), 0);
  EXPECT_EQ(DateOf({2000, 1, 1}), 36526);
  EXPECT_EQ(DateOf({1, 1, 1}), -693593);
  EXPECT_EQ(DateOf({2000, 2, 29}), DateOf({2000, 3, 1}).value() - 1);
  const CalendarDay none[] = {{1900, 2, 29}, {2023, 4, 31}, {2023, 13, 1}, {2023, 0, 1},
                              {2023, 1, 0},  {0, 1, 1},     {10000, 1, 1}};
  for (const auto& day : none) EXPECT_EQ(DateOf(day), std::nullopt) << day.year << day.month;
  const CalendarDay day = DayOf(36526 + 59);
  EXPECT_EQ(day.year * 10000 + day.month * 100 + day.day, 20000229);
}

}  // namespace
}  // namespace customsconv
