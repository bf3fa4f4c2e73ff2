#include "tables/rows/table_rows.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/fake_host.h"
#include "support/table_image.h"
#include "support/text.h"

namespace customsconv {
namespace {

constexpr const char* kTable = "C:\\OUT\\T.DBF";

// A kind and a text: "decimal 1.50".
std::string Shown(const TableValue& value) {
  constexpr const char* kKinds[] = {"empty", "text", "decimal", "date", "logical", "misfit"};
  return kKinds[static_cast<std::size_t>(value.kind)] + (" " + std::string(value.text));
}

TEST(TableRows, ReadsEachValueByTheTypeOfItsField) {
  const struct {
    std::string field;
    std::vector<const char*> stored;
    std::string shown;
  } cases[] = {
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
  for (const auto& c : cases) {
    TableImage image("A C2, F " + c.field);
    for (const char* stored : c.stored) image.Row({"Яя", stored});
    FakeHost host;
    host.files[kTable] = image.Bytes();
    TableRows rows(host, "c:\\out\\t");
    std::string shown;
    while (rows.Next()) {
      EXPECT_EQ(Shown(rows.Values()[0]), "text Яя");
      shown += (shown.empty() ? "" : ", ") + Shown(rows.Values()[1]);
    }
    EXPECT_EQ(shown, c.shown) << c.field;
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
