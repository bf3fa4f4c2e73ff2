#include "text/words.h"

#include <gtest/gtest.h>

#include <random>

#include "support/text.h"

namespace customsconv {
namespace {

using WordList = std::vector<std::string_view>;

TEST(Words, RunsOfDelimitersSeparateOnce) {
  EXPECT_EQ(Words(",,a;,b c,", ",;"), (WordList{"a", "b c"}));
  EXPECT_EQ(WordCount(",,a,,b,", ","), 2U);
  EXPECT_EQ(ExtractWord(2, ",,a,,b,", ","), "b");
  EXPECT_EQ(ExtractWord(0, ",,a,,b,", ","), "");
  EXPECT_EQ(ExtractWord(3, ",,a,,b,", ","), "");
  EXPECT_EQ(TextFromWord(1, "__a_ b__c \r\n", "_"), "b__c");  // counts from 0
  EXPECT_EQ(TextFromWord(3, "__a_b__c", "_"), "");
}

TEST(Words, DelimitersInsideQuotesDoNotSeparate) {
  EXPECT_EQ(WordsQuoted("\"a,b\",c", ","), (WordList{"\"a,b\"", "c"}));
  EXPECT_EQ(WordsQuoted("x\",\"y,,z", ","), (WordList{"x\",\"y", "z"}));
  EXPECT_EQ(WordsQuoted("a,\"b,c", ","), (WordList{"a", "\"b,c"}));
  EXPECT_EQ(ExtractWordQuoted(1, "\"a,b\",c", ","), "\"a,b\"");
}

TEST(Positions, CountFromOneAndAreZeroWhenAbsent) {
  EXPECT_EQ(PosFrom("ab", "abcab", 2), 4U);
  EXPECT_EQ(PosFrom("ab", "abcab", 60), 0U);
  EXPECT_EQ(PosFromNoCase(Win("ёж"), Win("Ёлка ЁЖИК"), 1), 6U);
  EXPECT_EQ(PosFromNoCase("[", "{", 1), 0U);  // no letters, though 32 apart
  EXPECT_EQ(PosFromNoCase("a", "A", 3), 0U);
  EXPECT_EQ(LastPos("x", std::string(255, '-') + "x"), 0U);  // short text ends before it
  EXPECT_EQ(PosChar("abca", 'a', 2), 4U);
  EXPECT_EQ(PosInRange("cd", "abcdcd", 3, 5), 0U);  // would end beyond the range
  EXPECT_EQ(PosInRange("cd", "abcdcd", 3, 600), 2U);
  EXPECT_EQ(CopyRange("abcdef", 1, 30, 4), "bcd");
  EXPECT_EQ(CopyRange("abcdef", 4, 30, 400), "ef");
}

TEST(Positions, InLongTextsAreThoseOfAnyText) {
  std::mt19937 random(1);
  for (int round = 0; round < 3000; ++round) {
    std::string text(random() % 300, ' ');
    for (char& c : text) c = "<ab>"[random() % 4];
    const std::string pattern = text.substr(0, random() % 9);
    const std::size_t from = random() % 310;
    EXPECT_EQ(FindInLong(text, pattern, from), text.find(pattern, from)) << text << from;
  }
}

TEST(Texts, ReplaceAndCompare) {
  EXPECT_EQ(ReplaceAll("aaaaa", "aa", "b"), "bba");
  EXPECT_EQ(ReplaceAll("ab", "b", "bbb"), "abbb");
  EXPECT_EQ(ReplaceAll("ab", "", "x"), "ab");
  EXPECT_TRUE(SameStr(std::nullopt, std::nullopt));
  EXPECT_FALSE(SameStr("a", "A"));
  EXPECT_FALSE(SameTextFast("", std::nullopt));
  EXPECT_TRUE(SameTextFast(Win("Ёж"), Win("ёЖ")));
}

}  // namespace
}  // namespace customsconv
