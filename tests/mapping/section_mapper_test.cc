#include "mapping/section_mapper.h"

#include <gtest/gtest.h>

#include "mapping_world.h"

namespace customsconv {
namespace {

// Two blocks of the header and one under the goods, each with one field, into one table. The rules
// have ", " between their lines.
MappingParts Parts(const std::string& rules, const char* kind = "ESADout") {
  return {.kind = kind,
          .source = "Proc=C9, A { X=C9 }, MechUnitPart { X=C9 }, ESADoutGoods { Docs { X=C9 } }",
          .tables = R"(
HEAD = DBRHEAD   : G011 C9
  ROWS = DBRROWS : T C9
  TOVAR = DBRTOV : X C1
    DOCS = DBRDOCS : T C9
    KMPK = DBRKMPK : X C1
)",
          .rules = LinesOf(rules)};
}

TEST(SectionMapper, TakesTheRecordsOfTheBlocksThatItsLinesName) {
  const std::string in_rows = "[S], =ESADout, [dbrrows.x], ";
  const std::string file = " файла C:\\RULES\\armti.txt";
  const struct {
    const char* what;
    std::string rules, target, shown;
  } cases[] = {
      {"one block", in_rows + "A{ and more, T=X", R"(ROWS{T="a1"}{T="a2"})", ""},
      {"under the goods", "[S], =ESADout, [DBRDOCS], Docs{, T=X", R"(TOVAR{DOCS{T="d"}})", ""},
      {"no block", in_rows + "Nothing{, ", "", "Не найден блок Nothing" + file},
      {"no brace", in_rows + "A, ", "", "Не задан тип блока в строке 2" + file},
      {"no table", "[S], =ESADout, [NOTAB], A{", "", "Не описана таблица NOTAB в документе OUT"},
      {"declared blocks", in_rows + "*{, ;a name A {, T=X, ;Docs?{, ;A;{, [DBRROWS], A",
       R"(ROWS{T="a1"}{T="a2"}{T="a1"}{T="a2"})", "Не задан тип блока в строке 8" + file},
      {"the parts of a mechanism", in_rows + "MechUnitPart*{, ;A{, T=X", R"(ROWS{T="m"})", ""},
      // Its name with the star is told as missing before the block is taken.
      {"declared parts", in_rows + "*{, ;MechUnitPart*{, ;A{, T=X",
       R"(ROWS{T="m"}{T="a1"}{T="a2"})", "Не найден блок MechUnitPart*" + file},
      {"no declaring line", in_rows + "*{, T=X", "", ""},
      {"the next section is another's", "[S], =ESADout, G011=Proc, [S2], =ESADout, G011=No",
       R"(G011="IM")", ""}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    MappingWorld world(Parts(c.rules));
    world.Fill(R"(Proc=IM, A\1\X=a1, A\2\X=a2, MechUnitPart\1\X=m, ESADoutGoods\2\Docs\1\X=d)");
    EXPECT_EQ(world.MapSection(), c.target);
    EXPECT_EQ(world.shown(), c.shown.empty() ? std::vector<std::string>()
                                             : std::vector<std::string>{"message: " + c.shown});
  }
}

TEST(SectionMapper, AValueAdjustmentMayLackABlock) {
  MappingWorld world(Parts("[S], =x, [DBRROWS], Nothing{", "DTSout_CU"));
  EXPECT_EQ(world.MapSection(), "");
  EXPECT_TRUE(world.shown().empty());
}

}  // namespace
}  // namespace customsconv
