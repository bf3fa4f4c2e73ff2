#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "support/text.h"
#include "text/blanks.h"
#include "text/decimal_text.h"
#include "text/file_names.h"
#include "text/numbers.h"
#include "text/text_split.h"
#include "text/words.h"
#include "text/xml_escape.h"

namespace customsconv {
namespace {

TEST(Blanks, TrimmingTakesEveryByteUpTo32AndShortFormsCutFirst) {
  EXPECT_EQ(Trim(std::string_view("\0\x1F a b\t\r\n", 9)), "a b");
  EXPECT_EQ(Trim("\xA0"), "\xA0");
  const std::string text = " " + std::string(253, 'x') + "  tail";
  EXPECT_EQ(TrimBlanks(text), std::string(253, 'x'));
  EXPECT_EQ(TrimBlanksLeft(text), std::string(253, 'x') + " ");
}

TEST(Blanks, PaddingEndsAt255AndCleaningCollapses) {
  EXPECT_EQ(PadRight("ab", '.', 4), "ab..");
  EXPECT_EQ(PadLeft("17", '0', 7), "0000017");
  EXPECT_EQ(PadRight("a", 'b', 1000).size(), 255U);
  EXPECT_EQ(PadRight(std::string(300, 'a'), 'b', 1000).size(), 300U);
  EXPECT_EQ(PadLeft(std::string(300, 'a'), 'b', 1000).size(), 255U);  // short text
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

TEST(FileNames, PartsOfAPath) {
  const struct {
    std::string_view path, drive, folder_part, folder, name, base_name;
  } cases[] = {{"C:\\OUT\\A.B.DBF", "C:", "C:\\OUT\\", "C:\\OUT", "A.B.DBF", "A.B"},
               {"c:\\A", "c:", "c:\\", "c:\\", "A", "A"},
               {"C:A.DBF", "C:", "C:", "C:", "A.DBF", "A"},
               {"out.d/A", "", "out.d/", "out.d", "A", "A"},
               {"/a", "", "/", "/", "a", "a"},
               {"a", "", "", "", "a", "a"},
               {"/mnt/smb:s/12:30.xml", "", "/mnt/smb:s/", "/mnt/smb:s", "12:30.xml", "12:30"},
               {"\xC0:x", "", "", "", "\xC0:x", "\xC0:x"}};
  for (const auto& c : cases) {
    EXPECT_EQ(DriveOf(c.path), c.drive) << c.path;
    EXPECT_EQ(FolderPart(c.path), c.folder_part) << c.path;
    EXPECT_EQ(ExtractFileFolder(c.path), c.folder) << c.path;
    EXPECT_EQ(FileNameOf(c.path), c.name) << c.path;
    EXPECT_EQ(ExtractFileBaseName(c.path), c.base_name) << c.path;
  }
}

TEST(FileNames, ExtensionsAndClosingSeparators) {
  EXPECT_EQ(ForceExtension("C:\\a.b\\DBRHEAD", "DBF"), "C:\\a.b\\DBRHEAD.DBF");
  EXPECT_EQ(ChangeExtension("a.b\\C.D.E", "DBF"), "a.b\\C.D.DBF");
  EXPECT_EQ(ChangeExtension("a.b\\C", ".DBF"), "a.b\\C.DBF");
  EXPECT_EQ(WithTrailingBackslash("/a/"), "/a/");
  EXPECT_EQ(WithTrailingBackslash(""), "");
}

using Texts = std::vector<std::pair<std::string_view, std::string_view>>;
using Numbers = std::vector<std::pair<std::string_view, double>>;

TEST(Numbers, FirstNumberOfAText) {
  const Numbers cases = {{"abc 12.50 kg", 12.5}, {"-7", -7}, {"x-7", 7}, {"", 0}, {"1.2.3", 1.2}};
  for (const auto& [text, number] : cases) EXPECT_EQ(NumberFromText(text), number) << text;
  EXPECT_EQ(NumberFromText(std::string(254, ' ') + "12"), 1);  // short text ends in between
}

TEST(Numbers, IntegerLiterals) {
  const Numbers good = {{"\r\n\t -12 \t", -12},     {"$ff", 255},      {"0X10", 16},
                        {"2147483647", 2147483647}, {"$FFFFFFFF", -1}, {"-$7F", -127}};
  const Numbers bad = {{"2147483648", 10}, {"$100000000", 10}, {"", 1},
                       {"-", 2},           {"12a", 3},         {"1.0", 2}};
  std::int32_t value = 0;
  for (const auto& [text, number] : good) EXPECT_EQ(StrictInt(text), number) << text;
  for (const auto& [text, position] : bad) {
    EXPECT_FALSE(TextToInt(text, value)) << text;
    EXPECT_EQ(value, position) << text;
  }
  EXPECT_EQ(ErrorOf([] { (void)StrictInt("1z"); }), "'1z' is not a valid integer value");
}

TEST(Numbers, RealLiterals) {
  const Numbers good = {{"\r\n\t -.5 \r\n", -0.5}, {"5.", 5},       {"+1e3", 1000},
                        {"1.5E-1", 0.15},          {"1e-99999", 0}, {"0e99999", 0}};
  const Numbers bad = {{"", 1},      {".", 2},   {"1,5", 2},  {"1.2.3", 4}, {"1e+", 4},
                       {"1e400", 5}, {"inf", 1}, {"0x10", 2}, {"--1", 2},   {"nan", 1}};
  double value = 0;
  for (const auto& [text, number] : good) {
    EXPECT_TRUE(TextToFloat(text, value) && value == number) << text;
  }
  for (const auto& [text, position] : bad) {
    EXPECT_TRUE(!TextToFloat(text, value) && value == position) << text;
  }
}

TEST(Numbers, HexadecimalTextAndFlags) {
  EXPECT_EQ(HexToInt("$1aF"), 0x1AFU);
  EXPECT_EQ(HexToInt("#FFFFFFFF1"), 0xFFFFFFF1U);
  for (const char* text : {"", "#$1", "1g", "-1", " 1"}) EXPECT_EQ(HexToInt(text), 0U) << text;
  for (const char* text : {"1", " y ", "Yes", "true", "-1", " да "}) {
    EXPECT_TRUE(StrToBoolRu(Win(text))) << text;
  }
  for (const char* text : {"", "2", "да.", "+1"}) EXPECT_FALSE(StrToBoolRu(Win(text))) << text;
}

TEST(Numbers, RoundingWorksOnTheDecimalDigits) {
  const Texts cents = {{"2.675", "2.68"},   {"99.995", "100.00"},   {"-0.001", "0.00"},
                       {"-0.005", "-0.01"}, {"\r\n 007\t", "7.00"}, {"12345e-4", "1.23"},
                       {"5e-3", "0.01"},    {"1.5e3", "1500.00"},   {"1e-99999", "0.00"},
                       {"abc", "0.00"},     {"1e99999", "0.00"},    {"0e99999", "0.00"}};
  const Texts up_to_six = {{"12.5000", "12.5"}, {"100", "100"},     {"5e-7", "0.000001"},
                           {"-0.0000004", "0"}, {"1.9999995", "2"}, {"1e-5", "0.00001"}};
  for (const auto& [text, rounded] : cents) EXPECT_EQ(RoundDecimalText(text, 2), rounded) << text;
  for (const auto& [text, written] : up_to_six) EXPECT_EQ(UpToSixDecimals(text), written) << text;
  EXPECT_EQ(RoundDecimalText("12345678901234567890.125", 2), "12345678901234567890.13");
  EXPECT_EQ(RoundDecimalText("-2.6749999999999999999999", 2), "-2.67");
  EXPECT_EQ(RoundDecimalText("9.5", 0), "10");
}

TEST(Numbers, ComputedNumbersReadBackTheSame) {
  EXPECT_EQ(NumberText(0.1L + 0.2L), "3.00000000000000000e-01");
  for (const double value : {1e-300, 123456.789, 2.0 / 3.0, 9007199254740993.0, -1.7e308}) {
    double read = 0;
    EXPECT_TRUE(TextToFloat(NumberText(value), read));
    EXPECT_EQ(read, value);
  }
  EXPECT_EQ(UpToSixDecimals(NumberText(std::numeric_limits<double>::infinity())), "0");
}

}  // namespace
}  // namespace customsconv
