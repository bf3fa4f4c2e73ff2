#include "common/text_split.h"

#include <gtest/gtest.h>

#include "support/text.h"

namespace customsconv {
namespace {

std::string Shown(const SplitText& split) { return Utf8(split.head) + "|" + Utf8(split.tail); }

TEST(TextSplit, WrapsAtWordBoundaries) {
  const auto wrapped = [](const char* text, int width) {
    return Shown(WrapSplit(Win(text), width));
  };
  EXPECT_EQ(wrapped("один два три", 6), "один|два три");
  EXPECT_EQ(wrapped("однодлинное", 4), "одно|длинное");
  EXPECT_EQ(wrapped("ёж,ёлка", 4), "ёж,|ёлка");
  EXPECT_EQ(wrapped(" longword", 4), "|longword");
  EXPECT_EQ(wrapped("abc def", 0), "abc def|");
  EXPECT_EQ(Shown(WrapSplit("ab cdef", CharSet(), true, 5)), "ab   |cdef");  // padded
  EXPECT_EQ(Shown(WrapSplit("ab", CharSet(), true, 5)), "ab|");              // was not split
}

// The steps as they are meant, walked one character at a time.
std::string WalkedHead(std::string_view text, const CharSet& delimiters, std::size_t width) {
  std::size_t i = width;
  while (i <= text.size() && !delimiters.Has(text[i - 1])) ++i;
  if (i > width) --i;
  while (i > 0 && text[i - 1] == ' ') --i;
  if (i > width) {
    while (i > 0 && !delimiters.Has(text[i - 1])) --i;
    if (i == 0) return std::string(text.substr(0, width));
    while (i > 0 && text[i - 1] == ' ') --i;
  }
  return std::string(text.substr(0, i));
}

TEST(TextSplit, LooksNoFurtherThanNeededAndFindsTheSamePlace) {
  for (const CharSet& delimiters : {CharSet(","), CharSet(" "), CharSet(", ")}) {
    for (int number = 0; number < 6561; ++number) {  // 3 to the 8
      std::string text;
      for (int rest = number, i = 0; i < 8; ++i, rest /= 3) text += "a ,"[rest % 3];
      for (int width = 1; width < 8; ++width) {
        const SplitText split = WrapSplit(text, delimiters, false, width);
        const std::string head = WalkedHead(text, delimiters, static_cast<std::size_t>(width));
        ASSERT_EQ(split.head, head) << '"' << text << "\" at " << width;
        ASSERT_LT(split.tail.size(), text.size());
      }
    }
  }
}

TEST(TextSplit, SplitsAtLineBreaksAndAtSets) {
  EXPECT_EQ(Shown(SplitFirstLine("one \r\n \n two\nthree", true, 20)), "one|two\nthree");
  EXPECT_EQ(Shown(SplitFirstLine("one\rtwo", true, 4)), "one|two");
  EXPECT_EQ(Shown(SplitFirstLine("one\ntwo", true, 3)), "one|\ntwo");  // behind the width
  EXPECT_EQ(Shown(SplitFirstLine("one\ntwo four", false, 9)), "one\ntwo|four");
  EXPECT_EQ(Shown(SplitFirstLine("one\ntwo", true, 0)), "one\ntwo|");
  EXPECT_EQ(Shown(SplitAtSet("one ;; , two;three", ";,", 30)), "one|two;three");
  EXPECT_EQ(Shown(SplitAtSet("one two;three", ";,", 7)), "one two|;three");
  EXPECT_EQ(Shown(SplitAtSet("one;", ";", -1)), "one;|");
}

}  // namespace
}  // namespace customsconv
