#include "mapping/section_mapper.h"

#include <gtest/gtest.h>

#include "mapping_world.h"

namespace customsconv {
namespace {

// Two blocks of the header and one under the goods, each with one field, into one table.
MappingParts Parts(const std::string& rules, const char* kind = "ESADout") {
  return {.kind = kind,
          .source = R"(
Proc=C9
A {
X=C9
}
MechUnitPart {
X=C9
}
ESADoutGoods {
Docs {
X=C9
}
})",
          .tables = R"(
HEAD = DBRHEAD   : G011 C9
  ROWS = DBRROWS : T C9
  TOVAR = DBRTOV : X C1
    DOCS = DBRDOCS : T C9
    KMPK = DBRKMPK : X C1
)",
          .rules = rules};
}

TEST(SectionMapper, TakesTheRecordsOfTheBlocksThatItsLinesName) {
  const std::string in_rows = "[S]\n=ESADout\n[dbrrows.x]\n";
  const std::string missing = "message: Не найден блок MechUnitPart* файла C:\\RULES\\armti.txt";
  const struct {
    const char* what;
    std::string rules, target;
    std::vector<std::string> shown;
  } cases[] = {
      {"one block", in_rows + "A{ and more\nT=X", R"(ROWS{T="a1"}{T="a2"})", {}},
      {"under the goods", "[S]\n=ESADout\n[DBRDOCS]\nDocs{\nT=X", R"(TOVAR{DOCS{T="d"}})", {}},
      {"no block",
       in_rows + "Nothing{\n",
       "",
       {"message: Не найден блок Nothing файла C:\\RULES\\armti.txt"}},
      {"no brace",
       in_rows + "A\n",
       "",
       {"message: Не задан тип блока в строке 2 файла C:\\RULES\\armti.txt"}},
      {"no table",
       "[S]\n=ESADout\n[NOTAB]\nA{\n",
       "",
       {"message: Не описана таблица NOTAB в документе OUT"}},
      {"declared blocks",
       in_rows + "*{\n;a name A {\nT=X\n;Docs?{\n;A;{\n[DBRROWS]\nA\n",
       R"(ROWS{T="a1"}{T="a2"}{T="a1"}{T="a2"})",
       {"message: Не задан тип блока в строке 8 файла C:\\RULES\\armti.txt"}},
      {"the parts of a mechanism", in_rows + "MechUnitPart*{\n;A{\nT=X", R"(ROWS{T="m"})", {}},
      // Its name with the star is told as missing before the block is taken.
      {"declared parts",
       in_rows + "*{\n;MechUnitPart*{\n;A{\nT=X",
       R"(ROWS{T="m"}{T="a1"}{T="a2"})",
       {missing}},
      {"no declaring line", in_rows + "*{\nT=X", "", {}},
      {"the next section is another's",
       "[S]\n=ESADout\nG011=Proc\n[S2]\n=ESADout\nG011=No",
       R"(G011="IM")",
       {}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    MappingWorld world(Parts(c.rules));
    world.Source("Proc", "IM");
    world.Source(R"(A\1\X)", "a1");
    world.Source(R"(A\2\X)", "a2");
    world.Source(R"(MechUnitPart\1\X)", "m");
    world.Source(R"(ESADoutGoods\2\Docs\1\X)", "d");
    EXPECT_EQ(world.MapSection(), c.target);
    EXPECT_EQ(world.shown(), c.shown);
  }
}

TEST(SectionMapper, AValueAdjustmentMayLackABlock) {
  MappingWorld world(Parts("[S]\n=x\n[DBRROWS]\nNothing{\n", "DTSout_CU"));
  EXPECT_EQ(world.MapSection(), "");
  EXPECT_TRUE(world.shown().empty());
}

}  // namespace
}  // namespace customsconv
