#include <gtest/gtest.h>

#include "cli_world.h"

namespace customsconv::cli {
namespace {

class CatalogueTest : public CliWorld, public testing::Test {};

TEST_F(CatalogueTest, ListShowsTypesWithTablesAndFiles) {
  EXPECT_EQ(RunProgram({"catalogue", "list", "--program", "C:\\PROG"}), 0);
  EXPECT_TRUE(Printed("DT5  ДТ 5  DBRHEAD.DBF  C:\\PROG/Data\\Kordwin.dcf\n"));
  EXPECT_TRUE(Printed("ESADout  ЭД ДТ  C:\\PROG/Data\\Kordwin.dcf\n"));
  EXPECT_EQ(RunProgram({"catalogue", "list", "--json", "--program", "C:\\PROG"}), 0);
  EXPECT_TRUE(
      Printed(R"({"code":"ESADout","short_name":"ЭД ДТ","full_name":"","main_block":"Goods",)"
              R"("table":"","root":"ESADout","file":"C:\\PROG/Data\\Kordwin.dcf"})"));
}

TEST_F(CatalogueTest, ShowPrintsTheFieldTree) {
  EXPECT_EQ(RunProgram({"catalogue", "show", "--program", "C:\\PROG", "ESADout"}), 0);
  EXPECT_EQ(output.results,
            "ESADout  ЭД ДТ  C:\\PROG/Data\\Kordwin.dcf\n"
            "  Proc  C 2  <Proc>  Вид\n  Empty  C 5  <Empty>\n"
            "  Goods  block  <Goods>\n    Code  C 10  <p:Code>  Код\n"
            "    Part  block  <Part>\n      Sum  N 13.2  <Sum>\n");
  EXPECT_EQ(RunProgram({"catalogue", "show", "--json", "--program", "C:\\PROG", "ESADout"}), 0);
  for (const char* part :
       {R"({"fields":[{"name":"Proc","caption":"Вид","xml_path":"Proc","type":"C","width":2,)",
        R"("block":[{"name":"Sum","caption":"","xml_path":"Sum","type":"N","width":13,"lines":1,)",
        R"("decimals":2}]}]}],"messages":[]})"}) {
    EXPECT_TRUE(Printed(part));
  }
}

TEST_F(CatalogueTest, ATableSetTakesItsFieldsFromTheTables) {
  EXPECT_EQ(
      RunProgram({"catalogue", "show", "--program", "C:\\PROG", "--tables", "C:\\OUT", "DT5"}), 0);
  EXPECT_EQ(output.results,
            "DT5  ДТ 5  DBRHEAD.DBF  C:\\PROG/Data\\Kordwin.dcf\n  G073  C 7\n  G011  C 4\n  TOVAR "
            " block\n"
            "    G073  C 7\n    G33  C 2\n");
}

}  // namespace
}  // namespace customsconv::cli
