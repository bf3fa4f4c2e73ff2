#include "common/words.h"

#include <gtest/gtest.h>

#include "support/text.h"

namespace customsconv {
namespace {

using WordList = std::vector<std::string_view>;

TEST(Words, RunsOfDelimitersSeparateOnce) {
  const struct {
    std::string_view text;
    WordList words;
  } cases[] = {
      {"", {}}, {",,;", {}}, {",,a,,b,", {"a", "b"}}, {"a", {"a"}}, {"a b;c", {"a b", "c"}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(Words(c.text, ",;"), c.words);
    EXPECT_EQ(WordCount(c.text, ",;"), c.words.size());
    EXPECT_EQ(ExtractWord(0, c.text, ",;"), "");
    for (std::size_t i = 0; i < c.words.size(); ++i) {
      EXPECT_EQ(ExtractWord(i + 1, c.text, ",;"), c.words[i]);
    }
    EXPECT_EQ(ExtractWord(c.words.size() + 1, c.text, ",;"), "");
  }
}

TEST(Words, DelimitersInsideQuotesDoNotSeparate) {
  const struct {
    std::string_view text;
    WordList words;
  } cases[] = {{"\"a,b\",c", {"\"a,b\"", "c"}},
               {"x\",\"y,,z", {"x\",\"y", "z"}},
               {"\",\"", {"\",\""}},
               {"a,\"b,c", {"a", "\"b,c"}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(WordsQuoted(c.text, ","), c.words);
    EXPECT_EQ(WordCountQuoted(c.text, ","), c.words.size());
    EXPECT_EQ(ExtractWordQuoted(c.words.size(), c.text, ","), c.words.back());
    EXPECT_EQ(ExtractWordQuoted(c.words.size() + 1, c.text, ","), "");
  }
}

TEST(Words, TextFromWordCountsFromZeroAndKeepsWhatFollows) {
  EXPECT_EQ(TextFromWord(0, "__a_ b__c \r\n", "_"), "a_ b__c");
  EXPECT_EQ(TextFromWord(1, "__a_ b__c \r\n", "_"), "b__c");
  EXPECT_EQ(TextFromWord(3, "__a_b__c", "_"), "");
}

TEST(Positions, CountFromOneAndAreZeroWhenAbsent) {
  EXPECT_EQ(PosFrom("ab", "abcab", 1), 1U);
  EXPECT_EQ(PosFrom("ab", "abcab", 2), 4U);
  EXPECT_EQ(PosFrom("ab", "abcab", 5), 0U);
  EXPECT_EQ(PosFrom("ab", "abcab", 60), 0U);
  EXPECT_EQ(PosFrom("", "abcab", 1), 0U);
  EXPECT_EQ(PosFromNoCase(Win("ёж"), Win("Ёлка ЁЖИК"), 1), 6U);
  EXPECT_EQ(PosFromNoCase("B\xB9", "a[B\xB9", 1), 3U);
  EXPECT_EQ(PosFromNoCase("[", "{", 1), 0U);  // no letters, though 32 apart
  EXPECT_EQ(PosFromNoCase("ab", "AB", 2), 0U);
  EXPECT_EQ(PosFromNoCase("a", "A", 3), 0U);
  EXPECT_EQ(LastPos("ab", "abcab"), 4U);
  EXPECT_EQ(LastPos("", "abcab"), 0U);
  EXPECT_EQ(LastPos("x", std::string(255, '-') + "x"), 0U);  // short text ends before it
  EXPECT_EQ(PosChar("abca", 'a', 2), 4U);
  EXPECT_EQ(PosChar("abca", 'a', 5), 0U);
  EXPECT_EQ(PosInRange("cd", "abcdcd", 1, 5), 2U);
  EXPECT_EQ(PosInRange("cd", "abcdcd", 3, 5), 0U);  // would end beyond the range
  EXPECT_EQ(PosInRange("cd", "abcdcd", 3, 600), 2U);
  EXPECT_EQ(PosInRange("cd", "abcdcd", 5, 5), 0U);
}

TEST(Positions, CopyRangeStopsAtTheLimit) {
  EXPECT_EQ(CopyRange("abcdef", 1, 3, 6), "bcd");
  EXPECT_EQ(CopyRange("abcdef", 1, 30, 4), "bcd");
  EXPECT_EQ(CopyRange("abcdef", 4, 30, 400), "ef");
  EXPECT_EQ(CopyRange("abcdef", 4, 1, 4), "");
}

TEST(Texts, ReplaceAllGoesLeftToRightWithoutOverlap) {
  EXPECT_EQ(ReplaceAll("1,5,0", ",", "."), "1.5.0");
  EXPECT_EQ(ReplaceAll("aaaaa", "aa", "b"), "bba");
  EXPECT_EQ(ReplaceAll("ab", "b", "bbb"), "abbb");
  EXPECT_EQ(ReplaceAll("ab", "", "x"), "ab");
}

TEST(Texts, MissingTextsEqualEachOtherOnly) {
  EXPECT_TRUE(SameStr(std::nullopt, std::nullopt));
  EXPECT_FALSE(SameStr(std::nullopt, ""));
  EXPECT_FALSE(SameStr("a", "A"));
  EXPECT_TRUE(SameTextFast(std::nullopt, std::nullopt));
  EXPECT_FALSE(SameTextFast("", std::nullopt));
  EXPECT_TRUE(SameTextFast(Win("Ёж"), Win("ёЖ")));
}

}  // namespace
}  // namespace customsconv
