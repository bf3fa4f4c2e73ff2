#include <gtest/gtest.h>

#include "cli_world.h"

namespace customsconv::cli {
namespace {

class TablesTest : public CliWorld, public testing::Test {
 protected:
  TablesTest() {
    TableImage image = TableImage("G32 N5, SUM N8.2");
    image.Field("NAME", 'C', 20).Field("DAY", 'D', 8);
    image.Row({"1", "3.50", "Сахар, \"песок\"", "19350611"}).DeletedRow({"2", "", "Соль"});
    host.files["C:\\OUT\\GOODS.DBF"] = image.Row({"3"}).Bytes();
  }
};

TEST_F(TablesTest, ListShowsFieldsAndRowCount) {
  EXPECT_EQ(RunProgram(R"(tables list C:\OUT\GOODS.DBF C:\OUT\dbrtov)"), kDone);
  EXPECT_EQ(output.results,
            "C:\\OUT\\GOODS.DBF  3 rows\n"
            "  G32         N 5\n  SUM         N 8.2\n  NAME        C 20\n  DAY         D 8\n"
            "C:\\OUT\\dbrtov  0 rows\n  G073        C 7\n  G33         C 2\n");
  EXPECT_EQ(RunProgram(R"(tables list --json C:\OUT\DBRTOV.DBF)"), kDone);
  EXPECT_EQ(output.results, R"({"tables":[{"file":"C:\\OUT\\DBRTOV.DBF","rows":0,"fields":[)"
                            R"({"name":"G073","type":"C","length":7,"decimals":0},)"
                            R"({"name":"G33","type":"C","length":2,"decimals":0}]}],"messages":[]})"
                            "\n");
}

TEST_F(TablesTest, VerifyFindsWhatIsWrongWithASet) {
  const auto head = [] { return TableImage("G073 C7, G011 C4"); };
  const auto goods = [] { return TableImage("G073 C7, G33 C2"); };
  host.files["C:\\OUT\\GOODS.DBF"] = TableImage("A C1").Bytes();
  struct Case {
    std::string head, goods, printed;
  };
  const std::string whole = goods().Row({"2"}).Row({"1"}).DeletedRow({"9"}).Bytes();
  const std::string heads = head().Row({"1"}).Row({"2"}).Bytes();
  const Case cases[] = {
      {heads, whole, "3 tables, 5 rows: nothing found\n"},
      {head().Row({"1"}).DeletedRow({"2"}).Bytes(),
       goods().Row({"1"}).Row({"2"}).Row({"2"}).Bytes(),
       "DBRTOV.DBF: 2 rows that belong to no row of DBRHEAD.DBF; the first is row 2\n"
       "3 tables, 5 rows: 1 finding\n"},
      {head().Row({"1"}).Row({"2"}).Row({"1"}).Bytes(), whole,
       "DBRHEAD.DBF: 1 row with the G073 of an earlier row; the first is row 3\n"
       "3 tables, 6 rows: 1 finding\n"},
      {heads, whole.substr(0, whole.size() - 1) + " ",
       "DBRTOV.DBF: no end mark behind the rows\n3 tables, 5 rows: 1 finding\n"},
      {heads.substr(0, heads.size() - 5), whole,
       "DBRHEAD.DBF: cannot be read: DBF not DBF2: C:\\OUT\\DBRHEAD.DBF\n2 tables, 3 rows: 1 "
       "finding\n"}};
  for (const auto& [head_bytes, goods_bytes, printed] : cases) {
    host.files["C:\\OUT\\DBRHEAD.DBF"] = head_bytes;
    host.files["C:\\OUT\\DBRTOV.DBF"] = goods_bytes;
    const ExitStatus status = printed.ends_with("nothing found\n") ? kDone : kNegative;
    EXPECT_EQ(RunProgram(R"(tables verify --program C:\PROG C:\OUT)"), status);
    EXPECT_EQ(output.results, printed);
  }
  host.files["C:\\OUT\\DBRHEAD.DBF"] = heads;
  host.files["C:\\OUT\\ccsave-1.jnl"] = "";
  EXPECT_EQ(RunProgram(R"(tables verify --json C:\OUT)"), kNegative);
  EXPECT_TRUE(Printed(R"("findings":[{"name":"kept-journal","table":"ccsave-1.jnl","text":)"));
}

TEST_F(TablesTest, ShowPrintsTheRowsThatAreWanted) {
  const std::string head = "G32,SUM,NAME,DAY\n";
  const std::string first = "1,3.50,\"Сахар, \"\"песок\"\"\",1935-06-11\n";
  const std::string filled =
      "C:\\OUT\\GOODS.DBF  3 rows\n"
      "     1  G32=1 | SUM=3.50 | NAME=Сахар, \"песок\" | DAY=11.06.35\n";
  const std::string x(80, 'x');
  host.files["C:\\OUT\\WIDE.DBF"] = TableImage("A C80, B C80, C C5").Row({x, x, "5"}).Bytes();
  const std::pair<std::string, std::string> cases[] = {
      {"--filled C:\\OUT\\WIDE.DBF --rows 1 ",
       "C:\\OUT\\WIDE.DBF  1 rows\n     1  A=" + x + "\n        B=" + x + " | C=5\n" + filled},
      {"",
       " # | G32 |  SUM | NAME           | DAY\n"
       " 1 |   1 | 3.50 | Сахар, \"песок\" | 11.06.35\n"
       "*2 |   2 |      | Соль           |\n"
       " 3 |   3 |      |                |\n"},
      {"--filled", filled + "    *2  G32=2 | NAME=Соль\n"
                            "     3  G32=3\n"},
      {"--csv", head + first + "3,,,\n"},
      {"--csv --rows 1", head + first},
      {"--csv --rows 2-", head + "3,,,\n"},
      {"--csv --rows 3-900", head + "3,,,\n"},
      {"--csv --rows 4", head},
      {"--csv --rows 4 C:\\OUT\\DBRTOV.DBF",
       "==> C:\\OUT\\DBRTOV.DBF <==\nG073,G33\n==> C:\\OUT\\GOODS.DBF <==\n" + head}};
  for (const auto& [options, printed] : cases) {
    EXPECT_EQ(RunProgram("tables show " + options + R"( C:\OUT\GOODS.DBF)"), kDone);
    EXPECT_EQ(output.results, printed);
  }
  EXPECT_EQ(RunProgram(R"(tables show --json --rows 1-2 C:\OUT\GOODS.DBF)"), kDone);
  const std::string records = output.results.substr(output.results.find("\"records\""));
  EXPECT_EQ(records, R"("records":[{"number":1,"deleted":false,)"
                     R"("values":["1","3.50","Сахар, \"песок\"","1935-06-11"]},)"
                     R"({"number":2,"deleted":true,"values":["2","","Соль",""]}]}],"messages":[]})"
                     "\n");
}

TEST_F(TablesTest, ATableThatCannotBeOpenedIsAnError) {
  host.files["C:\\OUT\\BAD.DBF"] = "picture";
  EXPECT_EQ(RunProgram(R"(tables list C:\OUT\NO.DBF)"), kError);
  EXPECT_EQ(output.remarks, "error: dBaseInt: Не найден файл C:\\OUT\\NO.DBF\n");
  EXPECT_EQ(RunProgram(R"(tables list --json C:\OUT\DBRTOV.DBF C:\OUT\BAD.DBF)"), kError);
  EXPECT_TRUE(Printed("}],\"messages\":[],\"error\":\"DBF not DBF: C:\\\\OUT\\\\BAD.DBF\"}\n"));
}

TEST_F(TablesTest, RecoverUndoesAnInterruptedSave) {
  const char* recover = R"(tables recover --json C:\OUT)";
  EXPECT_EQ(RunProgram(recover), kDone);
  EXPECT_TRUE(Printed(R"({"folder":"C:\\OUT/","outcome":"nothing to do","messages":[]})"));
  const std::string before = Table("DBRHEAD.DBF") + Table("DBRTOV.DBF");
  const auto die = [this] {
    for (int change = 8; !host.files.Has("C:\\OUT\\~ccsave.jnl"); ++change) {
      host.files.DieAtChange(change);
      EXPECT_THROW(Convert(), SuddenDeath);
      host.files.Revive();
    }
  };
  die();
  EXPECT_EQ(RunProgram(recover), kDone);
  EXPECT_TRUE(Printed(R"("outcome":"undone","begun":"2024-03-15 10:30:00",)"
                      R"("save":"10702020/110615/0001234")"));
  EXPECT_EQ(Table("DBRHEAD.DBF") + Table("DBRTOV.DBF"), before);
  die();
  const std::string rows = host.files["C:\\OUT\\DBRTOV.DBF"];
  host.files["C:\\OUT\\DBRTOV.DBF"] = rows + "rows of another program";
  EXPECT_EQ(RunProgram(R"(tables recover C:\OUT)"), kError);
  EXPECT_NE(output.remarks.find("таблицу DBRTOV.DBF"), std::string::npos) << output.remarks;
  EXPECT_EQ(RunProgram(recover), kError) << "until somebody has looked";
  EXPECT_TRUE(Printed(R"("kept":[{"journal":"ccsave-1.jnl","begun":"2024-03-15 10:30:00",)"));
  host.files.Remove("C:\\OUT\\ccsave-1.jnl");
  host.files["C:\\OUT\\DBRTOV.DBF"] = rows;
  die();
  host.files.SetReadOnly("C:\\OUT");
  host.files.Remove("C:\\OUT\\~ccsave.lck");
  EXPECT_EQ(RunProgram(recover), kError);
  host.files.Remove("C:\\OUT\\~ccsave.jnl");
  EXPECT_EQ(RunProgram(recover), kDone);
}

TEST_F(TablesTest, CreateMakesADescribedSet) {
  host.files["C:\\IN\\set.txt"] = Win(
      "; набор\r\n# тоже\r\n\r\na  g1 c 10\r\nB.DBF KEY N 8 2\r\nA\tG2 D 8\r\nB LONG C 300\r\n");
  host.files.AddFolder("C:\\NEW\\");
  const char* create = R"(tables create --description C:\IN\set.txt --output C:\NEW)";
  EXPECT_EQ(RunProgram(create), kDone);
  EXPECT_EQ(output.results, "C:\\NEW/A.DBF\nC:\\NEW/B.DBF\n");
  EXPECT_EQ(TableDump(host.files["C:\\NEW\\A.DBF"].bytes()), "G1 C10, G2 D8\n");
  EXPECT_EQ(TableDump(host.files["C:\\NEW\\B.DBF"].bytes()), "KEY N8.2, LONG C300\n");
  EXPECT_EQ(RunProgram(create), kUsage) << "tables that exist stay";
}

TEST_F(TablesTest, CreateNamesTheLineThatCannotBe) {
  const std::pair<const char*, const char*> cases[] = {
      {"A G1 C", "wanted: TABLE FIELD TYPE WIDTH [DECIMALS]"},
      {"A G1 X 5", "the type is one of C, N, D, L, M"},
      {"A G1 D 10", "the width of a D field lies from 8 to 8"},
      {"A G1 N x", "the width of a N field lies from 1 to 32"},
      {"A G1 N 5 4", "the decimals lie from 0 to 3"},
      {"A ABCDEFGHIJK C 5", "a field name has at most 10 letters"},
      {"..\\A G1 C 5", "a table name holds no folder"},
      {"A G0 C 5", "the table has this field already"},
      {"A G1 C 65000\nA G2 C 65000", "the record would be longer than 65535 bytes"}};
  for (const auto& [line, cause] : cases) {
    SCOPED_TRACE(line);
    host.files["C:\\IN\\set.txt"] = "A G0 C 5\n" + std::string(line);
    EXPECT_EQ(RunProgram(R"(tables create --description C:\IN\set.txt --output C:\OUT)"), kUsage);
    EXPECT_NE(output.remarks.find(cause), std::string::npos) << output.remarks;
    EXPECT_NE(output.remarks.find("set.txt, line "), std::string::npos);
    EXPECT_FALSE(host.files.Has("C:\\OUT\\A.DBF"));
  }
}

}  // namespace
}  // namespace customsconv::cli
