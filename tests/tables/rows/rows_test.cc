#include <gtest/gtest.h>

#include <array>

#include "support/catalogue_builder.h"
#include "tables/rows/declaration_rows.h"
#include "tables/rows/set_levels.h"
#include "tables/rows/table_rows.h"

namespace customsconv {
namespace {

constexpr const char* kFiles = R"([DT4.HEADER]
ShortName=ДТ 4
DbfName=HEAD.DBF
[DT4.Files]
HEAD = HEAD.DBF [OLD]
[DT5.HEADER]
ShortName=ДТ 5
DbfName=HEAD.DBF
[DT5.Files]
HEAD = HEAD.DBF [G071+G072+G073]
  LIST = LIST.DBF [UID|DOCID]
  KMPK = KMP [G071+G072+G073]
  TOVAR = TOVAR.DBF [G071+G072,G073]
    DOK = DOK.DBF [G071+G072+G073+G32]
    KMPK = KMP [G071+G072+G073+G32]
  ALL = ALL.DBF
[DTS.HEADER]
DbfName=OTHER.DBF
[DTS.Files]
OTHER = OTHER.DBF [G073]
)";

class SetLevelsTest : public testing::Test {
 protected:
  SetLevels Levels(const std::vector<std::string>& tables) {
    return LevelsOfTables(types, tables, world);
  }

  CatalogueWorld world;
  TDocTypeList types{"Kordwin.dcf", false, (world.Dcf(kFiles), world)};
};

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : "+") + name;
  return text;
}

TEST_F(SetLevelsTest, DrawTheTreeOfTheNewestTypeOverEachHead) {
  std::string text;
  for (const SetLevel& level : Levels({"Tovar.dbf", "Head.dbf"})) {
    text += level.type + " " + level.block + " " + level.table + " " + Joined(level.keys);
    if (level.parent >= 0)
      text += " in " + std::to_string(level.parent) + " " + Joined(level.parent_keys);
    text += "\n";
  }
  EXPECT_EQ(text, R"(DT5  HEAD.DBF G071+G072+G073
DT5 LIST LIST.DBF UID in 0 DOCID
DT5 KMPK KMP.DBF G071+G072+G073 in 0 G071+G072+G073
DT5 TOVAR TOVAR.DBF G071+G072+G073 in 0 G071+G072+G073
DT5 TOVAR\DOK DOK.DBF G071+G072+G073+G32 in 3 G071+G072+G073+G32
DT5 TOVAR\KMPK KMP.DBF G071+G072+G073+G32 in 3 G071+G072+G073+G32
DT5 ALL ALL.DBF  in 0 
)");
  EXPECT_TRUE(Levels({"TOVAR.DBF"}).empty());
  EXPECT_EQ(Levels({"HEAD.DBF", "OTHER.DBF"}).back().type, "DTS");
}

TEST_F(SetLevelsTest, KnowWhatTellsRowsApart) {
  const SetLevels levels = Levels({"HEAD.DBF"});
  // Goods are found from below by G32 as well.
  const std::pair<const char*, const char*> cases[] = {{"tovar.dbf", "G071+G072+G073+G32"},
                                                       {"HEAD.DBF", "G071+G072+G073"},
                                                       {"LIST.DBF", "UID"},
                                                       {"X.DBF", ""}};
  for (const auto& [table, key] : cases) EXPECT_EQ(Joined(RowKeyOf(levels, table)), key) << table;
}

TEST(DeclarationNumber, ComesInManyForms) {
  FakeHost host;
  host.files["C:\\H.DBF"] = TableImage("G071 C8, G072 D8, G073 C7")
                                .Row({"10702020", "20150611", "0001234"})
                                .Row({"КT000001", "", "7"})
                                .Bytes();
  TableRows rows(host, "C:\\H.DBF");
  const std::tuple<const char*, int, bool> cases[] = {
      {"10702020/110615/0001234", 1, true},    {"10702020/11062015/0001234", 1, true},
      {"10702020/11.06.15/00012345", 1, true},  // the field keeps seven digits
      {"10702020/11.6.2015/0001234", 1, true}, {" 10702020 / 2015-06-11 / 0001234", 1, true},
      {"10702020/110616/0001234", 1, false},   {"10702020/11061915/0001234", 1, false},
      {"10702020//0001234", 1, false},         {"1070202/110615/0001234", 1, false},
      {"10702020/110615/1234", 1, false},      {"КT000001//7", 2, true},
      {"КT000001/110615/7", 2, false}};
  for (const auto& [text, row, is_of] : cases) {
    rows.GoTo(row);
    const auto number = DeclarationNumber::Parse(Win(text));
    ASSERT_TRUE(number) << text;
    EXPECT_EQ(number->IsOf(rows.table()), is_of) << text;
  }
  for (const char* text : {"", "10702020", "10702020/110615", "a/b/c", "a/1106/c", "a/1/2/3",
                           "/110615/7", "a/110615/", "a/11.06/c", "a/1.2.3/c"}) {
    EXPECT_FALSE(DeclarationNumber::Parse(text)) << text;
  }
}

// Rows of a table that belong to the declaration.
std::string Wanted(Host& host, const DeclarationRows& declaration, const std::string& table) {
  TableRows rows(host, "C:\\OUT\\" + table);
  const DeclarationRows::Filter filter = declaration.FilterFor(table, rows);
  std::string text;
  while (rows.Next()) {
    if (filter.Wants(rows)) text += std::to_string(rows.Number()) + " ";
  }
  return text;
}

TEST_F(SetLevelsTest, LeadToAllRowsOfADeclaration) {
  // Rows have the last part of the number and a further value; "-" in front: deleted.
  const auto put = [this](const char* name, const std::string& field,
                          const std::vector<std::array<const char*, 2>>& rows) {
    TableImage image("G071 C8, G072 D8, G073 C7, " + field);
    for (const auto& [number, value] : rows) {
      const bool deleted = *number == '-';
      const std::vector<std::string> row{"1", "20150611", number + deleted, value};
      deleted ? image.DeletedRow(row) : image.Row(row);
    }
    world.Table(name, image);
  };
  put("HEAD", "DOCID C4", {{"7", "a"}, {"8", "b"}, {"-8", "x"}, {"8", "c"}});
  put("TOVAR", "G32 N3", {{"8", "1"}, {"7", "2"}, {"-8", "3"}});
  put("KMP", "G32 N3", {{"8", "9"}, {"7", "1"}});
  put("DOK", "G32 N3", {{"8", "1"}, {"7", "1"}, {"8", "3"}, {"8", "4"}});
  put("FREE", "G32 N3", {{"8", ""}});
  world.Table("LIST", TableImage("UID C4").Row({"a"}).Row({"b"}).Row({"c"}).Row({"x"}));
  world.Table("ALL", TableImage("A C60").Row({"x"}));
  const SetLevels levels = Levels({"HEAD.DBF"});
  const auto number = DeclarationNumber::Parse("1/110615/8");
  const DeclarationRows live(world.host, "C:\\OUT\\", levels, *number, false);
  ASSERT_TRUE(live.Found());
  const DeclarationRows all(world.host, "C:\\OUT\\", levels, *number, true);
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"HEAD.DBF", "2 3 4 ", "2 3 4 "},
      {"LIST.DBF", "2 3 ", "2 3 4 "},
      {"TOVAR.DBF", "1 3 ", "1 3 "},
      {"KMP.DBF", "1 ", "1 "},
      {"DOK.DBF", "1 ", "1 3 "},
      {"ALL.DBF", "1 ", "1 "},
      {"FREE.DBF", "", ""}};
  for (const auto& [name, wanted, with_deleted] : cases) {
    EXPECT_EQ(Wanted(world.host, live, name), wanted) << name;
    EXPECT_EQ(Wanted(world.host, all, name), with_deleted) << name;
  }
  EXPECT_FALSE(DeclarationRows(world.host, "C:\\OUT\\", levels,
                               *DeclarationNumber::Parse("1/110615/9"), false)
                   .Found());
}

constexpr const char* kTable = "C:\\OUT\\T.DBF";

// A kind and a text: "decimal 1.50".
std::string Shown(const TableValue& value) {
  constexpr const char* kKinds[] = {"empty", "text", "decimal", "date", "logical", "misfit"};
  return kKinds[static_cast<std::size_t>(value.kind)] + (" " + std::string(value.text));
}

TEST(TableRows, ReadsEachValueByTheTypeOfItsField) {
  const std::tuple<std::string, std::vector<const char*>, const char*> cases[] = {
      {"N8.2",
       {"1.50", "0       ", "-.5", "-0.00", "+007.", "1.23456", "", "********", "1e5", "1 2", ".",
        "-", "1,5"},
       "decimal 1.50, decimal 0.00, decimal -0.50, decimal 0.00, decimal 7.00, decimal 1.23456, "
       "empty , misfit ********, misfit 1e5, misfit 1 2, misfit ., misfit -, misfit 1,5"},
      {"N10", {"9876543210"}, "decimal 9876543210"},
      {"F5", {"-12"}, "decimal -12"},
      {"M10", {"12"}, "decimal 12"},
      {"D8",
       {"19450509", "20240229", "20230229", "2024", "", "00000000"},
       "date 1945-05-09, date 2024-02-29, misfit 20230229, misfit 2024, empty , empty "},
      {"L1",
       {"T", "y", "n", "F", "?", "Д"},
       "logical 1, logical 1, logical 0, logical 0, empty , misfit Д"},
      {"C8", {"", "  a b", "0012", "№ Ёж"}, "text , text   a b, text 0012, text № Ёж"}};
  for (const auto& [field, values, expected] : cases) {
    TableImage image("A C2, F " + field);
    for (const char* stored : values) image.Row({"Яя", stored});
    FakeHost host;
    host.files[kTable] = image.Bytes();
    TableRows rows(host, "c:\\out\\t");
    std::string shown;
    while (rows.Next()) {
      EXPECT_EQ(Shown(rows.Values()[0]), "text Яя");
      shown += (shown.empty() ? "" : ", ") + Shown(rows.Values()[1]);
    }
    EXPECT_EQ(shown, expected) << field;
  }
}

TEST(TableRows, KeepsBytesThatNoTextNeeds) {
  FakeHost host;
  const std::string wide = "Я" + std::string(297, 'x') + "я";
  host.files[kTable] = TableImage("F C300").Row({wide}).Bytes();
  TableRows wide_rows(host, kTable);
  ASSERT_TRUE(wide_rows.Next());
  EXPECT_EQ(wide_rows.Values()[0].text, wide);
  const std::string bytes("a\r\n\x15\x01\xDB\"\0c\0\0", 11);  // 0xDB: a full block in code page 866
  std::string table = TableImage("F C12, G C50").Row({}).Bytes();
  table.replace(table.size() - 63, bytes.size(), bytes);
  host.files[kTable] = table;
  TableRows rows(host, kTable);
  ASSERT_TRUE(rows.Next());
  EXPECT_EQ(rows.Values()[0].text, std::string("a\r\n§\x01█\"\0c", 12));
}

TEST(TableRows, WalksSelectedColumnsUnderNamesThatDiffer) {
  FakeHost host;
  TableImage image("NAIM C3, naim C3, ИМЯ N3, DELETED L1");
  host.files[kTable] = image.Row({"a", "b", "1", "T"}).DeletedRow({"c", "d", "2", "F"}).Bytes();
  TableRows rows(host, kTable);
  EXPECT_EQ(rows.Find("имя"), 2);
  EXPECT_EQ(rows.Find("NAIM_2"), 1);
  EXPECT_EQ(rows.Find("X"), -1);
  rows.Select({3, 1, 1});
  rows.AddDeleted();
  std::string all;
  for (const TableColumn& column : rows.columns()) all += column.name + " ";
  while (rows.Next()) {
    all += "\n" + std::to_string(rows.Number());
    for (const TableValue& value : rows.Values()) all += " " + std::string(value.text);
  }
  EXPECT_EQ(all, "DELETED NAIM_2 NAIM_2 DELETED_2 \n1 1 b b 0\n2 0 d d 1");
}

TEST(TableRows, TellsATableThatIsNotWhole) {
  FakeHost host;
  EXPECT_EQ(ErrorOf([&] { TableRows(host, kTable); }),
            Win("dBaseInt: Не найден файл C:\\OUT\\T.DBF"));
  host.files[kTable] = TableImage("F C60").Row({"a"}).Bytes();
  TableRows rows(host, kTable);
  EXPECT_EQ(ErrorOf([&] { rows.GoTo(2); }),
            Win("Не могу прочитать файл C:\\OUT\\T.DBF: нет строки 2"));
}

}  // namespace
}  // namespace customsconv
