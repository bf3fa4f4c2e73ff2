#include <gtest/gtest.h>

#include "support/text.h"
#include "text/blanks.h"
#include "text/text_split.h"
#include "text/xml_escape.h"

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

std::string Shown(const SplitText& split) { return Utf8(split.head) + "|" + Utf8(split.tail); }

TEST(TextSplit, WrapsAtWordBoundaries) {
  // Without delimiters given, all but letters and digits are.
  const std::tuple<const char*, const char*, int, const char*> cases[] = {
      {"один два три", "", 6, "один|два три"},
      {"однодлинное", "", 4, "одно|длинное"},
      {"ёж,ёлка", "", 4, "ёж,|ёлка"},
      {"один два три", "", 8, "один два|три"},
      {" longword", "", 4, "|longword"},
      {"abc def", "", 0, "abc def|"},
      {"a  ", "", 3, "a  |"},
      {"aa bb,cc", ",", 7, "aa bb,|cc"},
      {"aa   ,cc", ",", 3, "aa|,cc"},
      {"b,aa   ", ",", 5, "b,aa|"},
      {"b,  aa   cc", ",", 6, "b,|aa   cc"},
      {"  aa cc", ",", 4, "  aa|cc"},
      {"aa  cc", ",", 3, "aa |cc"}};
  for (const auto& [text, delimiters, width, split] : cases) {
    EXPECT_EQ(Shown(WrapSplit(Win(text), CharSet(delimiters), false, width)), split) << text;
  }
  EXPECT_EQ(Shown(WrapSplit("ab cdef", CharSet(), true, 5)), "ab   |cdef");  // padded
  EXPECT_EQ(Shown(WrapSplit("ab", CharSet(), true, 5)), "ab|");              // was not split
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

TEST(XmlEscape, KeepsQuotesAndCarriageReturns) {
  const std::string_view text = "a<b & \"c\">'\t\r\n\x01\xC0";
  const std::string_view escaped = "a&lt;b &amp; \"c\"&gt;' \r  \xC0";
  EXPECT_EQ(XmlEscape(text), escaped);
  EXPECT_EQ(XmlEscapeShort(text), escaped);
  EXPECT_EQ(XmlEscapeShort(std::string(254, 'x') + "<"), std::string(254, 'x') + "&");
}

TEST(XmlEscape, RecognisesIdentifiers) {
  const std::string guid = "0F8fAD5b-d9cb-469f-a165-70867728950e";
  EXPECT_TRUE(IsGuid(guid));
  EXPECT_TRUE(IsGuid("{{" + guid + "}}"));
  EXPECT_FALSE(IsGuid("0F8fAD5bd-9cb-469f-a165-70867728950e"));
  EXPECT_FALSE(IsGuid("0F8fAD5b-d9cb-469f-a165-70867728950g"));
}

}  // namespace
}  // namespace customsconv
