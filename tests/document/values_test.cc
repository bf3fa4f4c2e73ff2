#include <gtest/gtest.h>

#include "document/composite_value.h"
#include "document/document.h"
#include "document/formula.h"
#include "document/value_expression.h"
#include "support/catalogue_builder.h"

namespace customsconv {
namespace {

TEST(EvaluateFormula, FollowsPrecedencePercentAndTheTextOfParts) {
  const std::pair<const char*, double> cases[] = {
      {" 1 0 + 2 ", 12},     {"10-2-3", 5},        {"2+3*4", 14},        {"20/2/5*3", 6},
      {"2*(3+4)", 14},       {"((2))*(((3)))", 6}, {"100+18%", 118},     {"100-18%", 82},
      {"200*50%", 100},      {"50%*200", 10000},   {"50/50%", 100},      {"10%+5%", 15},
      {"100+(10%+5%)", 115}, {"100+10%+10%", 121}, {"(1/3)*3", 0.99999}, {"1e2+1", 101},
      {"(2)3", 2.000003},    {"3(1-2)", 2},        {"2*3(1-2)", 5},      {"(2)%+1%", 3}};
  for (const auto& [formula, value] : cases) {
    EXPECT_DOUBLE_EQ(static_cast<double>(EvaluateFormula(formula).value), value) << formula;
    EXPECT_FALSE(EvaluateFormula(formula).error) << formula;
  }
  EXPECT_TRUE(EvaluateFormula("50%*200").percent);
  for (const char* formula :
       {"",   "-1", "1+", "*2", "1++2", "10/0", "10/(1-1)", "10%+5",     "10%-5", "5%%",     "5%5",
        "(1", "1)", ")(", "()", "2(3)", "x",    "2*(1-2)",  "(10%+5)*0", "1,5",   "1e308*10"}) {
    EXPECT_TRUE(EvaluateFormula(formula).error) << formula;
  }
}

TEST(EvaluateFormula, TakesLongAndDeepFormulas) {
  constexpr std::size_t kMany = 200'000;
  std::string sum = "0";
  for (std::size_t i = 0; i < kMany; ++i) sum += " + 1*1";
  EXPECT_EQ(EvaluateFormula(sum).value, kMany);
  EXPECT_EQ(EvaluateFormula(std::string(kMany, '(') + "7" + std::string(kMany, ')')).value, 7);
  EXPECT_TRUE(EvaluateFormula(std::string(kMany, '(')).error);
}

class GetFieldValueTest : public testing::Test {
 protected:
  GetFieldValueTest() {
    document.OpenBlock("");
    const std::pair<const char*, const char*> values[] = {
        {"NAME", "Иванов"},    {"POST", "boss\r\n"}, {"D", "\r\n\t05.03.09"},
        {"ISO", "2009-03-05"}, {"SUM", "10.5"},      {"LIST", "10,5"},
        {"RATE", "18%"},       {"e", "3"},           {"AMOUNT", "5647503467.73"}};
    for (const auto& [name, value] : values) document.SetField(name, Win(value));
    for (const char* code : {"7201", "7202", "7203", "7204"}) {
      document.OpenBlock(R"(\\TOVAR)");
      document.SetField("G33", code);
    }
    document.OpenBlock(R"(\\CARS)");
    document.SetField("NUM", "A123");
  }

  std::string Value(std::string_view expression, int goods_index = 0, int mode = 0) {
    return Utf8(GetFieldValue(document, Win(expression), goods_index, mode));
  }
  void ExpectValues(std::initializer_list<std::string_view> rows) {
    for (const auto& [expression, value] : Cases(rows)) {
      EXPECT_EQ(Value(expression), value) << expression;
    }
  }

  CatalogueWorld world{
      TypeText("DS1", "XmlType=x\nMainBlock=TOVAR\nBlocksOnMainPage=1\nBlocksOnExtraPage=3",
               "NAME=C40\nPOST=40X2\nEMPTY=C9\nD=D\nISO=C10\nSUM=C9\nLIST=C9\nRATE=C9\ne=C9\n"
               "AMOUNT=C20\nTOVAR { G33=C10 }\nCARS { NUM=C10 }")};
  TDocTypeList types{"Kordwin.dcf", false, world};
  TDocument document{"DS1", types, world};
};

TEST_F(GetFieldValueTest, ReadsPathsAndConcatenations) {
  // A dropped group leaves its blank. NUM is a field of the current record.
  ExpectValues({" -> ", "POST+NAME -> boss Иванов", "NAME+EMPTY+POST -> Иванов  boss",
                "\"A+B\\C\"+NAME -> A+B\\C Иванов", "'It''s'+`x#y` -> It''s x\ry",
                "NAME+#+POST -> Иванов\rboss", "\"No. \"+NAME -> No.  Иванов", "\"No. \"+EMPTY -> ",
                "NAME{\"No.\"+EMPTY}POST -> Иванов  boss", "{}NAME\\{}+POST+ + -> Иванов boss",
                "NUM+g33+name -> A123 7201 Иванов", "NOWHERE+REF(NAME)+IIF(1=1,NAME,POST) -> ",
                "TOVAR\\3\\G33 -> 7203", ".\\NUM -> A123", "NAME\\POST -> Иванов boss",
                "TOVAR\\3\\G33+NAME -> TOVAR  7201 Иванов"});
  EXPECT_EQ(Value("G33", 2) + "/" + Value("G33", 9), "7203/");
  EXPECT_EQ(Value("\"No.\"+NAME+POST", 0, kNoBlanksBetweenPieces), "No.Ивановboss");
}

TEST_F(GetFieldValueTest, ReadsPartsOfDatesAndTexts) {
  ExpectValues({"D.DD+D.mm+D.YY -> 05 МАРТА 2009", "ISO.DD+D.XX+NAME.DD+EMPTY.YY -> ",
                "ISO.YY -> 2005", "DATE(yyyy-mm-dd,D) -> 2009-03-05",
                "date(dd/mm/yy,ISO)+DATE(yyyy) -> ", "COPY(G33, 0, 2)+COPY('abcd',2,2) -> 72 bc",
                "COPY(G33,5,2)+COPY(G33,1,x)+COPY( ,2,2) -> "});
}

TEST_F(GetFieldValueTest, CountsPagesOfThePrintedForm) {
  std::string pages;
  for (int goods = 0; goods < 8; ++goods) pages += Value("&&PAGE", goods);
  EXPECT_EQ(pages + " " + Value("&&ALLPAGE"), "12223334 3");
}

TEST_F(GetFieldValueTest, Calculates) {
  // A value goes to the first place that reads like its name: 132+e. The last byte is dropped.
  ExpectValues({"calc(SUM+SUM*(2-1)) -> 21", "CALC(G33/3) -> 2400.333333", "CALC(1-2) -> -1",
                "CALC( SUM * (2 + 1) ) -> 31.5", "CALC(AMOUNT+SUM) -> 5647503478.23",
                "CALC(AMOUNT*100/3) -> 188250115591", "CALC(5926148511.6+43.64) -> 5926148555.24",
                "CALC((5971895478.44-77.38)) -> 5971895401.06",
                "CALC(9999999999999.49+0.5) -> 9999999999999.99", "CALC(0.1+0.2) -> 0.3",
                "CALC(2+35 -> 5"});
  for (const char* formula : {"SUM-SUM)", "10/0)", "SUM*EMPTY)", "SUM*NAME)", "SUM*LIST)",
                              "SUM*RATE)", "1e2+e)", "9e300*9e300)", ")", ""}) {
    EXPECT_EQ(Value(std::string("CALC(") + formula), "") << formula;
  }
}

// In readable composite texts "<n" stands for 0x1E n, ">n" for 0x1F n and "|" for CR.
std::string Marked(std::string_view readable) {
  std::string bytes;
  for (std::size_t i = 0; i < readable.size(); ++i) {
    const char c = readable[i];
    if (c == '<' || c == '>') {
      bytes += c == '<' ? kPartMark : kPartValueMark;
      bytes += static_cast<char>(readable[++i] - '0');
    } else {
      bytes += c == '|' ? '\r' : c;
    }
  }
  return Win(bytes);
}

// Parts of these prefixes and levels.
TSubFieldsList Parts(std::initializer_list<std::pair<const char*, int>> described) {
  TSubFieldsList parts;
  for (const auto& [prefix, level] : described) {
    TSubField& part = parts.emplace_back();
    part.prefix = Marked(prefix);
    part.number = static_cast<std::uint8_t>(level);
  }
  return parts;
}

TEST(PartValue, EndsAtTheNextPartOrTheRangeAndIsTrimmed) {
  const std::string composite = Marked("<1N >1 bolts |<2|Q >25<3>3");
  EXPECT_EQ(PartValue(composite, 1, {0, 99}), "bolts");
  EXPECT_EQ(PartValue(composite, 2, {0, 99}), "5");
  EXPECT_EQ(PartValue(composite, 3, {0, 99}), "");
  EXPECT_EQ(PartValue(composite, 1, {4, 9}), "bo");
  EXPECT_EQ(PartValue(composite, 1, {50, 5}), "");
}

// A composite text, the number of the part, the value to store, and the result.
using StoreCase = std::tuple<const char*, int, const char*, const char*>;

void ExpectStores(const TSubFieldsList& parts, const std::vector<StoreCase>& cases) {
  for (const auto& [composite, number, value, result] : cases) {
    EXPECT_EQ(WithPart(Marked(composite), parts, number, Marked(value), {}), Marked(result))
        << composite << ", part " << number;
  }
}

// CRs stay in front of the next mark only, and go at the very front. An emptied part keeps its
// number alone, so it is made anew later; an empty value makes a missing part's marks.
TEST(WithPart, StoresFlatParts) {
  ExpectStores(Parts({{"NAME", 0}, {"|MADE BY:", 0}, {"", 0}}),
               {{"", 1, "bolts", "<1NAME>1 bolts"},
                {"<1NAME>1 bolts", 2, "ACME", "<1NAME>1 bolts<2|MADE BY:>2ACME"},
                {"<1NAME>1 old||<2by>2X", 1, "new", "<1NAME>1 new||<2by>2X"},
                {"<1NAME>1 old||", 1, "new", "<1NAME>1 new"},
                {"<1NAME>1 old|<2by>2X", 1, "", "<1|<2by>2X"},
                {"<1|<2by>2X", 1, "new", "<1|<2by>2X<1NAME>1 new"},
                {"", 2, "", "<2MADE BY:>2"},
                {"<1NAME>1 x", 3, "y", "<1NAME>1 x<3>3y"},
                {"", 9, "z", "<9>9z"},
                {"<1ИМЯ>1", 1, "болт", "<1ИМЯ>1 болт"}});
}

// Outer parts are made first; an area ends where a part of smaller level begins.
TEST(WithPart, KeepsNestedPartsInsideTheirArea) {
  const TSubFieldsList parts = Parts({{"A", 0}, {"B", 1}, {"C", 1}, {"D", 2}, {"E", 0}});
  ExpectStores(parts, {{"", 4, "x", "<1A>1<3 C>3<4 D>4 x"},
                       {"<1A>1<3 C>3<4 D>4 x", 2, "b", "<1A>1<3 C>3<4 D>4 x<2B>2 b"},
                       {"<1A>1<5E>5 e", 3, "c", "<1A>1<3 C>3 c <5E>5 e"},
                       {"<1A>1.<5E>5<3C>3 c<4D>4", 4, "", "<1A>1.<5E>5<3C>3 c<4"},
                       {"<1A>1<3 C>3 c", 5, "e", "<1A>1<3 C>3 c<5E>5 e"}});
  const std::string twice = Marked("<1A>1 a<1A>1 b");
  EXPECT_EQ(WithPart(twice, parts, 1, "z", TextRange{7, 14}), Marked("<1A>1 a<1A>1 z"));
  EXPECT_EQ(WithPart(twice, parts, 5, "q", TextRange{0, 7}), Marked("<1A>1 a<5E>5 q<1A>1 b"));
}

// The numbers of parts 30 ("N" here) and 31 ("O") are bytes that begin marks elsewhere.
TEST(CompositeValue, TheByteBehindAMarkIsAlwaysANumber) {
  const std::string composite = Marked("<N>Nx<O>Oy<1>1z");
  EXPECT_EQ(PartValue(composite, 30, {0, 99}), "x");
  EXPECT_EQ(PartValue(composite, 31, {0, 99}), "y");
  EXPECT_EQ(PartValue(composite, 1, {0, 99}), "z");
  EXPECT_EQ(PartValue(Marked("<O1>1"), 1, {0, 99}), "");
  TSubFieldsList parts(31);
  parts[0].number = 1;
  parts[29].number = 1;
  ExpectStores(parts, {{"<N>Nx<O>Oy<1>1z", 30, "", "<N<O>Oy<1>1z"},
                       {"<N>Nx<O>Oy<1>1z", 31, "new", "<N>Nx<O>Onew<1>1z"},
                       {"<N>Nx|<O>Oy", 30, "new", "<N>Nnew|<O>Oy"},
                       {"<2>2a<N>Nx<9>9", 1, "b", "<2>2a<N>Nx<9>9<1>1b"},
                       // A part that nobody described ends no area.
                       {"<M>Mq<P>P.<3>3", 30, "x", "<M>Mq<P>P.<N>Nx<3>3"}});
}

TEST(PrefixVariant, PrefersWhatCanBeWrittenAsItStands) {
  const std::pair<const char*, const char*> cases[] = {
      {"", ""},          {"ONE|TWO", "ONE"}, {"'X|PROC 1|*A*B", "A*B"},
      {"PROC|'XY", "X"}, {"'|PROC", ""},     {"PROC1|PROC2", "PROC2"}};
  for (const auto& [prefix, variant] : cases) EXPECT_EQ(PrefixVariant(prefix), variant) << prefix;
}

}  // namespace
}  // namespace customsconv
