#include "document/composite_value.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>
#include <vector>

#include "support/text.h"

namespace customsconv {
namespace {

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
  const char* const values[] = {"bolts", "5", ""};
  for (const int part : {1, 2, 3}) EXPECT_EQ(PartValue(composite, part, {0, 99}), values[part - 1]);
  EXPECT_EQ(PartValue(composite, 1, {4, 9}), "bo");
  EXPECT_EQ(PartValue(composite, 1, {50, 5}), "");
}

struct StoreCase {
  const char* composite;
  int number;
  const char *value, *result;
};

void ExpectStores(const TSubFieldsList& parts, const std::vector<StoreCase>& cases) {
  for (const StoreCase& c : cases) {
    SCOPED_TRACE(std::string(c.composite) + ", part " + std::to_string(c.number));
    EXPECT_EQ(WithPart(Marked(c.composite), parts, c.number, Marked(c.value), {}),
              Marked(c.result));
  }
}

// Letters do not run together across a mark. CRs stay in front of the next mark only, and
// go at the very front. An emptied part keeps its number alone, so it is made anew later; an
// empty value makes a missing part's marks.
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
