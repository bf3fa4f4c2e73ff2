#include <gtest/gtest.h>

#include "base/date_time.h"
#include "base/error.h"
#include "base/letter_case.h"
#include "base/short_text.h"
#include "support/text.h"

namespace customsconv {
namespace {

TEST(Error, CarriesTheMessageIn1251AndShowsItInUtf8) {
  const std::string path = Win("C:\\Декларации\\Ёж.DBF");
  using Kind = FileError::Kind;
  const std::pair<Error, const char*> cases[] = {
      {Error(Win("Нет данных №5")), "Нет данных №5"},
      {ListIndexError(-1), "List index out of bounds (-1)"},
      {ConversionError(Win("12ш")), "'12ш' is not a valid integer value"},
      {SilentAbort(), ""},
      {FileError(Kind::kMissing, path, ""), "Не найден файл C:\\Декларации\\Ёж.DBF"},
      {FileError(Kind::kOpen, path, "is a folder"),
       "Не могу открыть файл C:\\Декларации\\Ёж.DBF: is a folder"},
      {FileError(Kind::kCreate, "X", "full"), "Не могу создать файл X: full"},
      {FileError(Kind::kRead, "X", "full"), "Не могу прочитать файл X: full"},
      {FileError(Kind::kWrite, "X", "full"), "Не могу записать файл X: full"}};
  for (const auto& [error, expected] : cases) {
    EXPECT_STREQ(error.what(), expected);
    EXPECT_EQ(error.text(), Win(expected));
  }
}

const std::string kFull(255, 'x');

TEST(ShortText, CutsAt255BytesWhereItSays) {
  static_assert(!std::is_convertible_v<std::string_view, ShortText>);
  static_assert(!std::is_convertible_v<const char(&)[257], ShortText>);
  const std::tuple<const char*, ShortText, std::string> cases[] = {
      {"fits", ShortText::Cut(kFull), kFull},
      {"one too many", ShortText::Cut(kFull + "y"), kFull},
      {"one appended", ShortText::Cut(kFull) += 'y', kFull},
      {"cut within what is appended", ShortText::Cut(std::string(250, 'x')) += "xxxxxyyy", kFull},
      {"bytes above 127 and zero", "\xFF\0\x80", {"\xFF\0\x80", 3}},
      {"nothing", "", ""}};
  for (const auto& [what, text, expected] : cases) EXPECT_EQ(text.str(), expected) << what;
}

TEST(ShortText, AppendsAndAssignsItsOwnText) {
  ShortText text = "ab";
  text += text;
  EXPECT_EQ(text, "abab");
  text = ShortText::Cut(text.view().substr(1, 2));
  EXPECT_EQ(text, "ba");
  ShortText full = ShortText::Cut(std::string(200, 'x'));
  full += full;
  EXPECT_EQ(full.str(), kFull);
}

TEST(ShortText, ComparesByBytes) {
  EXPECT_LT(ShortText("B"), ShortText("a"));
  EXPECT_LT(ShortText("z"), ShortText("\xE0"));  // bytes are unsigned
  EXPECT_LT(ShortText("a"), ShortText("aa"));
  EXPECT_NE(ShortText("a\0"), ShortText("a"));
  EXPECT_EQ(CutToShort(kFull + "y"), kFull);
  static_assert(sizeof(ShortText) == 256);
}

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
