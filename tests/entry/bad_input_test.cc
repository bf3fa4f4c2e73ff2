#include <gtest/gtest.h>

#include "conversion_world.h"

namespace customsconv {
namespace {

constexpr std::string_view kRulesFile = "C:\\RULES\\armti.txt";
constexpr std::string_view kGoods = "G073 C7, G32 N5, G33 C10\n";

class BadInputTest : public ConversionWorld, public testing::Test {};

TEST_F(BadInputTest, RulesThatNameWhatIsNotThere) {
  host.files[kRulesFile] = WinLines(R"([DBRHEAD]
=ESADout
[DBRTOV]
Goods{
NOFIELD=Code
G33=Nothing
G33=No\1\Such
G33=\\
=
[]
{
=
[ ]
{{{
)");
  EXPECT_TRUE(Convert({Declaration("A")}));
  EXPECT_EQ(Utf8(host.dialogs.messages.at(0)), "Не описана таблица  в документе TD5");
  EXPECT_EQ(Table("DBRTOV.DBF"), std::string(kGoods) + "1: G073=\"0001234\"\n");
}

TEST_F(BadInputTest, RulesOfAHundredThousandLines) {
  std::string rules = "[DBRHEAD]\n=ESADout\n[DBRTOV]\nGoods{\n";
  for (int i = 0; i < 100000; ++i) rules += "F" + std::to_string(i) + " = Code\n";
  host.files[kRulesFile] = rules + "G33 = Code\n";
  EXPECT_TRUE(Convert({Declaration("ABC")}));
  EXPECT_EQ(Table("DBRTOV.DBF"), std::string(kGoods) +
                                     "1: G073=\"0001234\" G33=\"A\"\n"
                                     "2: G073=\"0001234\" G33=\"B\"\n"
                                     "3: G073=\"0001234\" G33=\"C\"\n");
}

TEST_F(BadInputTest, TableSetsThatLackTables) {
  host.files.Remove("C:\\OUT\\DBRTOV.DBF");
  EXPECT_TRUE(Convert({Declaration("A")}));
  ASSERT_EQ(host.dialogs.messages.size(), 2U);
  EXPECT_EQ(Utf8(host.dialogs.messages[0]), "Не могу открыть:\r\nC:\\OUT\\DBRTOV.DBF");
  EXPECT_EQ(Utf8(host.dialogs.messages[1]), "Не описана таблица DBRTOV в документе TD5");
  EXPECT_NE(Table("DBRHEAD.DBF").find("1: "), std::string::npos);

  host.files.Remove("C:\\OUT\\DBRHEAD.DBF");
  EXPECT_FALSE(Convert({Declaration("A")}));
  EXPECT_EQ(Utf8(library.quiet_failure()), "Не могу открыть файл C:\\OUT\\DBRHEAD.DBF");
  EXPECT_FALSE(host.files.Has("C:\\OUT\\veltlock.$$$"));
}

TEST_F(BadInputTest, TablesThatLackFields) {
  Put("DBRHEAD", TableImage("OTHER C8, G011 C1"));
  Put("DBRTOV", TableImage("G33 N3, G32 C1"));
  EXPECT_TRUE(Convert({Declaration("A")}));
  EXPECT_EQ(Table("DBRHEAD.DBF"), "OTHER C8, G011 C1\n1: G011=\"I\"\n");
  EXPECT_EQ(Table("DBRTOV.DBF"), "G33 N3, G32 C1\n1: G33=\"0\"\n");
}

// Rows are added in the layout that the table has; what its maker put elsewhere stays.
TEST_F(BadInputTest, TablesOfOtherMakers) {
  const TableImage goods = TableImage("G073 C7, G33 C10").Row({"1", "Я"});
  const TableImage memo = TableImage("G073 C7, G33 C10, NOTE M10").Row({"1", "Я"});
  const struct {
    const char* what;
    std::string bytes;
    const char* fields;
  } cases[] = {
      {"version 30", TableImage(goods).Extended().Bytes(), "G073 C7, G33 C10\n"},
      {"memo", WithByte(memo.Bytes(), 0, 0x83), "G073 C7, G33 C10, NOTE M10\n"},
      {"no code page mark", WithByte(goods.Bytes(), 29, 0), "G073 C7, G33 C10\n"},
      {"no end mark", goods.Bytes().substr(0, goods.Bytes().size() - 1), "G073 C7, G33 C10\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    host.files["C:\\OUT\\DBRTOV.DBF"] = c.bytes;
    EXPECT_TRUE(Convert({Declaration("B")}));
    EXPECT_EQ(Table("DBRTOV.DBF"), std::string(c.fields) +
                                       "1: G073=\"1\" G33=\"Я\"\n"
                                       "2: G073=\"0001234\" G33=\"B\"\n");
    EXPECT_EQ(host.files["C:\\OUT\\DBRTOV.DBF"].bytes()[0], c.bytes[0]);
  }
}

}  // namespace
}  // namespace customsconv
