#include "tables/rows/table_rows.h"

#include <gtest/gtest.h>

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
    char type;
    int width, decimals;
    std::string stored;
    const char* shown;
  } cases[] = {
      {'N', 8, 2, "1.50", "decimal 1.50"},
      {'N', 8, 2, "0       ", "decimal 0.00"},
      {'N', 8, 2, "-.5", "decimal -0.50"},
      {'N', 8, 2, "-0.00", "decimal 0.00"},
      {'N', 8, 2, "+007.", "decimal 7.00"},
      {'N', 8, 2, "1.23456", "decimal 1.23456"},
      {'N', 19, 0, "1234567890123456789", "decimal 1234567890123456789"},
      {'F', 5, 0, "-12", "decimal -12"},
      {'N', 8, 2, "", "empty "},
      {'N', 8, 2, "********", "misfit ********"},
      {'N', 8, 2, "1e5", "misfit 1e5"},
      {'N', 8, 2, "1 2", "misfit 1 2"},
      {'N', 8, 2, ".", "misfit ."},
      {'N', 8, 2, "-", "misfit -"},
      {'N', 8, 2, "1,5", "misfit 1,5"},
      {'M', 10, 0, "12", "decimal 12"},
      {'D', 8, 0, "19450509", "date 1945-05-09"},
      {'D', 8, 0, "20240229", "date 2024-02-29"},
      {'D', 8, 0, "20230229", "misfit 20230229"},
      {'D', 8, 0, "2024", "misfit 2024"},
      {'D', 8, 0, "", "empty "},
      {'D', 8, 0, "00000000", "empty "},
      {'L', 1, 0, "T", "logical 1"},
      {'L', 1, 0, "y", "logical 1"},
      {'L', 1, 0, "n", "logical 0"},
      {'L', 1, 0, "F", "logical 0"},
      {'L', 1, 0, "?", "empty "},
      {'L', 1, 0, "Д", "misfit Д"},
      {'C', 8, 0, "", "text "},
      {'C', 8, 0, "  a b", "text   a b"},
      {'C', 8, 0, "0012", "text 0012"},
      {'C', 8, 0, "№ Ёж", "text № Ёж"},
      {'C', 300, 0, "Я" + std::string(297, 'x') + "я", nullptr},
  };
  for (const auto& c : cases) {
    FakeHost host;
    host.files[kTable] =
        TableImage("A C2").Field("F", c.type, c.width, c.decimals).Row({"Яя", c.stored}).Bytes();
    TableRows rows(host, "c:\\out\\t");
    ASSERT_TRUE(rows.Next());
    EXPECT_EQ(Shown(rows.Values()[0]), "text Яя");
    EXPECT_EQ(Shown(rows.Values()[1]), c.shown == nullptr ? "text " + c.stored : c.shown);
  }
}

TEST(TableRows, KeepsBytesThatNoTextNeeds) {
  FakeHost host;
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
  TableImage image = TableImage("NAIM C3, naim C3");
  image.Field("ИМЯ", 'N', 3).Field("DELETED", 'L', 1);
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
