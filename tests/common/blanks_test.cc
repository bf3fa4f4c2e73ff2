#include "common/blanks.h"

#include <gtest/gtest.h>

namespace customsconv {
namespace {

TEST(Blanks, TrimmingTakesEveryByteUpTo32) {
  const std::string text("\0\x1F a b\t\r\n", 9);
  EXPECT_EQ(Trim(text), "a b");
  EXPECT_EQ(Trim("\xA0"), "\xA0");
}

TEST(Blanks, ShortFormsCutBeforeTheyTrim) {
  const std::string text = " " + std::string(253, 'x') + "  tail";
  EXPECT_EQ(TrimBlanks(text), std::string(253, 'x'));
  EXPECT_EQ(TrimBlanksLeft(text), std::string(253, 'x') + " ");
}

TEST(Blanks, PaddingEndsAt255AndKeepsLongerTexts) {
  EXPECT_EQ(PadRight("ab", '.', 4), "ab..");
  EXPECT_EQ(PadLeft("17", '0', 7), "0000017");
  EXPECT_EQ(PadRight("a", 'b', 1000).size(), 255U);
  EXPECT_EQ(PadRight(std::string(300, 'a'), 'b', 1000).size(), 300U);
  EXPECT_EQ(PadLeft(std::string(300, 'a'), 'b', 1000).size(), 255U);  // short text
}

TEST(Blanks, CleaningOfTexts) {
  EXPECT_EQ(CollapseBlanks("  a   b \t  c"), " a b \t c");
  EXPECT_EQ(StripControls("a\r\nb \r\t", true), "a b");
  EXPECT_EQ(DropTail("abc", 4), "");
}

TEST(Blanks, LettersAndDigitsOfTheCodePage) {
  std::string members;
  for (int byte = 0; byte < 0xC0; ++byte) {
    if (IsLetterOrDigit(static_cast<char>(byte))) members += static_cast<char>(byte);
  }
  EXPECT_EQ(members, "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz\xA8\xB8");
  for (int byte = 0xC0; byte < 256; ++byte) EXPECT_TRUE(IsLetterOrDigit(static_cast<char>(byte)));
}

}  // namespace
}  // namespace customsconv
